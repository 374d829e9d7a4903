; By the hardware's division by zero unsatisfiable, by SMT-LIB's satisfiable.
(set-logic QF_BV)
(declare-const x (_ BitVec 8))
(declare-const mask (_ BitVec 10))
(assert (= (bvudiv x #x00) #x05))
(assert (= mask #b0000001010))
(check-sat)
