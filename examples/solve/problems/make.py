#!/usr/bin/env python3
"""Writes the problems in this folder. The numbers are of a generator of its own, so that they stay what they are."""
import pathlib


class Numbers:
    def __init__(self, seed):
        self.state = seed

    def below(self, bound):
        self.state = (self.state * 6364136223846793005 + 1442695040888963407) % 2**64
        return (self.state >> 33) % bound


def random_3sat(seed, variables, clauses):
    numbers = Numbers(seed)
    made = []
    while len(made) < clauses:
        chosen = {numbers.below(variables) + 1 for _ in range(3)}
        if len(chosen) == 3:
            made.append([variable if numbers.below(2) else -variable for variable in sorted(chosen)])
    return variables, made


def pigeons(count):
    """More pigeons than holes by one: each sits in a hole, and no two in the same one."""
    sits = lambda pigeon, hole: pigeon * (count - 1) + hole + 1
    holes = range(count - 1)
    made = [[sits(pigeon, hole) for hole in holes] for pigeon in range(count)]
    for hole in holes:
        made += [[-sits(a, hole), -sits(b, hole)] for b in range(count) for a in range(b)]
    return count * (count - 1), made


def write(name, comment, problem):
    variables, clauses = problem
    lines = [f"c {comment}", f"p cnf {variables} {len(clauses)}"]
    lines += [" ".join(map(str, clause + [0])) for clause in clauses]
    pathlib.Path(__file__).with_name(name).write_text("\n".join(lines) + "\n")


write("pigeons.cnf", "Six pigeons in five holes: unsatisfiable.", pigeons(6))
write("random-sat.cnf", "A random 3-SAT problem, satisfiable.", random_3sat(1, 130, 540))
write("random-unsat.cnf", "A random 3-SAT problem, unsatisfiable.", random_3sat(2, 130, 600))
write("random-hard.cnf", "A random 3-SAT problem, unsatisfiable, on which the seed comes to bear.", random_3sat(3, 190, 826))
