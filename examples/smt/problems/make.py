#!/usr/bin/env python3
"""Writes the larger problems in this folder. The numbers are of a generator of its own, so that they stay what they
are."""
import pathlib


class Numbers:
    def __init__(self, seed):
        self.state = seed

    def below(self, bound):
        self.state = (self.state * 6364136223846793005 + 1442695040888963407) % 2**64
        return (self.state >> 33) % bound


def random_uflia(seed, variables, clauses):
    numbers = Numbers(seed)

    def literal():
        a, b, c = numbers.below(variables), numbers.below(variables), numbers.below(7)
        return [f"(< (+ x{a} {c}) x{b})", f"(= (f x{a}) x{b})", f"(not (= (f x{a}) (f x{b})))",
                f"(= (+ x{a} x{b}) {c + 5})"][numbers.below(4)]

    lines = ["(set-logic QF_UFLIA)", "(declare-fun f (Int) Int)"]
    lines += [f"(declare-const x{v} Int)\n(assert (<= 0 x{v} 9))" for v in range(variables)]
    return lines + [f"(assert (or {literal()} {literal()} {literal()}))" for _ in range(clauses)]


def pigeons(count):
    """More pigeons than holes by one: each sits in a hole, and no two in the same one."""
    holes = range(count - 1)
    lines = ["(set-logic QF_UF)"]
    lines += [f"(declare-const p{pigeon}h{hole} Bool)" for pigeon in range(count) for hole in holes]
    for pigeon in range(count):
        lines.append("(assert (or " + " ".join(f"p{pigeon}h{hole}" for hole in holes) + "))")
    for hole in holes:
        lines += [f"(assert (or (not p{a}h{hole}) (not p{b}h{hole})))" for b in range(count) for a in range(b)]
    return lines


def write(name, comment, lines):
    text = "\n".join([f"; {comment}"] + lines + ["(check-sat)"]) + "\n"
    pathlib.Path(__file__).with_name(name).write_text(text)


write("pigeons.smt2", "Seven pigeons in six holes, in propositions: unsatisfiable.", pigeons(7))
write("random-sat.smt2", "Random clauses over integers and a function, satisfiable.", random_uflia(2, 12, 60))
write("random-unsat.smt2", "Random clauses over integers and a function, unsatisfiable.", random_uflia(2, 12, 80))
