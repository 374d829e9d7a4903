; Seventeen coins for apples at 3 and pears at 2, with more pears than apples: satisfiable.
(set-logic QF_LIA)
(declare-const apples Int)
(declare-const pears Int)
(assert (and (> apples 0) (> pears apples)))
(assert (= (+ (* 3 apples) (* 2 pears)) 17))
(check-sat)
