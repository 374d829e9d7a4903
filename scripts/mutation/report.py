"""The outcome of a run as a Markdown text."""

import functools
import pathlib
from collections import Counter

EQUIVALENTS = pathlib.Path(__file__).parent / "equivalents.tsv"
ENOUGH = 0.97  # share of the mutants that compile and are not equivalent


@functools.lru_cache(maxsize=None)
def equivalents():
    """File, original and mutated line of each mutant that no test can notice, with the reason."""
    rows = {}
    for line in EQUIVALENTS.read_text(encoding="utf-8").splitlines():
        if line and not line.startswith("#"):
            file, original, mutated, reason = line.split("\t")
            rows[file, original, mutated] = reason
    return rows


def reason_of(mutant):
    """Why a mutant is equivalent; empty when it is not known to be."""
    return equivalents().get((mutant.file, mutant.original, mutant.mutated), "")


def kind_of(mutant, results):
    kind = results[mutant][0]
    return "equivalent" if kind == "survived" and reason_of(mutant) else kind


def counted(chosen, results):
    """Of each file how many mutants of each kind there are."""
    counts = {}
    for mutant in chosen:
        counts.setdefault(mutant.file, Counter())[kind_of(mutant, results)] += 1
    return counts


def share(counts):
    able = counts["killed"] + counts["survived"]
    return counts["killed"] / able if able else 1.0


def is_enough(chosen, results):
    """Whether all of `chosen` were judged, and enough of them killed."""
    all_judged = all(mutant in results for mutant in chosen)
    return all_judged and share(sum(counted(chosen, results).values(), Counter())) >= ENOUGH


def written(chosen, results, seconds):
    of = len(chosen)
    chosen = [mutant for mutant in chosen if mutant in results]
    counts = counted(chosen, results)
    total = sum(counts.values(), Counter())
    kinds = ("killed", "survived", "equivalent", "did not compile")
    lines = [
        "# Mutants",
        "",
        f"{len(chosen)} of {of} mutants in {len(counts)} files, {seconds / 60:.0f} minutes. Of those that compile and "
        f"are not equivalent, {100 * share(total):.1f} % are killed.",
        "",
        "| file | mutants | killed | survived | equivalent | did not compile | share killed |",
        "|---|--:|--:|--:|--:|--:|--:|",
    ]
    for file, of_file in [*counts.items(), ("all", total)]:
        cells = [file, sum(of_file.values()), *(of_file[kind] for kind in kinds), f"{100 * share(of_file):.1f} %"]
        lines.append("| " + " | ".join(map(str, cells)) + " |")
    killers = Counter(results[mutant][1].split(":")[0] for mutant in chosen if results[mutant][0] == "killed")
    lines += ["", "| killed by | mutants |", "|---|--:|"]
    lines += [f"| {program} | {count} |" for program, count in killers.most_common()]
    for kind in ("survived", "equivalent"):
        lines += ["", "## Survivors" if kind == "survived" else "## Equivalent mutants", ""]
        for mutant in chosen:
            if kind_of(mutant, results) == kind:
                reason = reason_of(mutant)
                lines += [f"- {mutant.file}:{mutant.line} ({mutant.operator})" + (f": {reason}" if reason else "")]
                lines += ["  ```cpp", f"  {mutant.original}", f"  {mutant.mutated}", "  ```"]
    return "\n".join(lines) + "\n"
