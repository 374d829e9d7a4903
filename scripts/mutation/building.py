"""Builds the tests once, then again and again with one source changed, and runs them.

The base is an ordinary build by CMake and Ninja. For a changed source its compile and link commands are run again in a
scratch folder, for those objects alone that the source goes into; the changed source stands in a folder of its own,
which the compiler searches first.
"""

import functools
import json
import os
import re
import resource
import shlex
import subprocess
import time

from mutation import schema

PROGRAMS = (
    "utils_tests", "utils_memory_tests", "options_tests", "configuration_tests", "configuration_memory_tests",
    "inspect_tests", "inspect_property_tests", "inspect_memory_tests", "own_symbols_tests", "abort_on_exception_tests",
)
FLAGS = "-O0 -w -Werror=return-type"
SANITIZERS = " -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer"

# The tests of a source are those that are named like it, and these.
FURTHER_TESTS = {
    "dalvo/configuration/appliedoptions.cpp": ["applier_test", "consistency_test"],
    "dalvo/configuration/applier.cpp": ["applier_test"],
    "dalvo/configuration/configuration.h": ["configuration_test"],
    "dalvo/configuration/load.cpp": ["load_test", "load_stream_test"],
    "dalvo/configuration/reader.cpp": ["reader_test", "load_test", "load_stream_test"],
    "dalvo/defaults/raise_assertion.cpp": ["abort_on_exception_test"],
    "dalvo/inspect/findings/check.cpp": ["inputcheck_test", "sectioncheck_test"],
    "dalvo/inspect/findings/collector.cpp": ["sectioncheck_test", "linecheck_test"],
    "dalvo/inspect/findings/finding.cpp": ["print_test"],
    "dalvo/inspect/findings/linewords.cpp": ["linecheck_test"],
    "dalvo/inspect/findings/replacedcheck.cpp": ["sectioncheck_test"],
    "dalvo/inspect/findings/slips.cpp": ["namecheck_test"],
    "dalvo/inspect/knowledge/defaults.cpp": ["catalogue_test"],
    "dalvo/inspect/knowledge/links.cpp": ["optioninfo_test", "describe_test"],
    "dalvo/inspect/runs/explanation.cpp": ["resolution_test"],
    "dalvo/inspect/runs/scenario.cpp": ["resolution_test"],
    "dalvo/options/optionparser.cpp": ["optionparser_test", "error_test"],
    "dalvo/options/optionparser.h": ["optionparser_test"],
    "dalvo/utils/hashmap.h": ["hashmap_test"],
    "dalvo/utils/hashtable.h": ["hashmap_test", "hashmap_lifetime_test"],
    "dalvo/utils/prefetch.h": ["hashmap_test"],
}

MEMORY = 2 << 30  # bytes that a test may take
SLOW = 0.1  # seconds from which a test comes after the others
PATIENCE = 60  # times as long as it takes, seconds of the wall to a second of the processor


class DidNotCompile(Exception):
    pass


def first_error(text):
    line = next((line for line in text.splitlines() if "error" in line), "")
    return line.rsplit("error: ", 1)[-1]


def compiled_line(command, **changes):
    """Runs a command; a failure is DidNotCompile, with what it wrote."""
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, **changes)
    if done.returncode != 0:
        raise DidNotCompile(done.stdout)
    return done.stdout


class Base:
    """The build of the unchanged sources."""

    def __init__(self, root, folder, sanitized):
        self.root = root
        self.folder = folder
        self.sanitized = sanitized
        self._build()
        self.compiles = {}  # object: its command
        for entry in json.loads((folder / "compile_commands.json").read_text()):
            command = shlex.split(entry["command"])
            self.compiles[command[command.index("-o") + 1]] = command
        self.links = {name: self._link_command(name) for name in PROGRAMS}
        self.users = self._users()
        for program in PROGRAMS:
            self.times_of(program)

    def _build(self):
        if not (self.folder / "build.ninja").exists():
            flags = FLAGS + (SANITIZERS if self.sanitized else "")
            subprocess.run(
                ["cmake", "-S", self.root, "-B", self.folder, "-G", "Ninja", "-DDALVO_BUILD_TESTS=ON",
                 "-DDALVO_BUILD_TOOLS=OFF", f"-DCMAKE_CXX_FLAGS={flags}", "-DCMAKE_BUILD_TYPE="],
                check=True, stdout=subprocess.DEVNULL,
            )
        subprocess.run(["ninja", "-C", self.folder, *PROGRAMS], check=True)

    def _link_command(self, program):
        lines = compiled_line(["ninja", "-C", self.folder, "-t", "commands", "-s", f"tests/{program}"]).splitlines()
        steps = re.split(r" && ", next(line for line in lines if line.startswith(": && ")))
        return shlex.split(steps[1])

    def _users(self):
        """Of each source under dalvo/: the objects that it goes into."""
        users = {}
        of = None
        for line in compiled_line(["ninja", "-C", self.folder, "-t", "deps"]).splitlines():
            if line and not line[0].isspace():
                of = line.split(":")[0]
            elif line.strip():
                path = os.path.relpath(os.path.join(self.folder, line.strip()), self.root)
                if path.startswith("dalvo/"):
                    users.setdefault(path, []).append(of)
        return users

    @functools.lru_cache(maxsize=None)
    def link_of(self, program, test):
        """The link command of a program; of `test` alone among its tests when that is not None."""
        return [
            part for part in self.links[program]
            if test is None or not part.endswith("_test.cpp.o") or os.path.basename(part) == f"{test}.cpp.o"
        ]

    @functools.lru_cache(maxsize=None)
    def objects_of(self, program, test):
        """The objects that make up a program, those of the archives included."""
        command = [*self.link_of(program, test), "-Wl,--trace,--trace"]
        command[command.index("-o") + 1] = os.devnull
        trace = compiled_line(command, cwd=self.folder)
        members = {a or b for a, b in re.findall(r"\((\S+\.o)\)|\)(\S+\.o)\b", trace)}
        found = {part for part in command if part.endswith(".o")}
        return found | {each for each in self.compiles if os.path.basename(each) in members and "/tests/" not in each}

    @functools.lru_cache(maxsize=None)
    def times_of(self, program):
        """The seconds that each test of the unchanged program takes."""
        path, tests = self.folder / f"{program}.json", self.folder / "tests" / program
        if not path.exists() or path.stat().st_mtime < tests.stat().st_mtime:
            subprocess.run([tests, f"--gtest_output=json:{path}"], check=True, cwd=self.folder,
                           stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        return {
            f"{suite['name']}.{test['name']}": float(test["time"].rstrip("s"))
            for suite in json.loads(path.read_text())["testsuites"] for test in suite["testsuite"]
        }

    def passes(self, program):
        """The two runs of a program, its quick tests and then its slow ones: a filter each, and seconds to wait."""
        times = self.times_of(program)
        slow = [name for name, seconds in times.items() if seconds > SLOW]
        seconds_of_slow = sum(times[name] for name in slow)
        yield "-" + ":".join(slow), int(4 + 2 * (sum(times.values()) - seconds_of_slow))
        if slow:
            yield ":".join(slow), int(4 + 2 * seconds_of_slow)

    def stages(self, file):
        """The runs for a mutant of a file, most telling first: pairs of a program and the only test taken of it."""
        stem = os.path.basename(file).split(".")[0]
        likely = FURTHER_TESTS.get(file, []) + [f"{stem}_test", f"{stem}_memory_test"]
        first = [
            (program, test)
            for test in dict.fromkeys(likely) for program in PROGRAMS
            if any(part.endswith(f"/{test}.cpp.o") for part in self.links[program])
        ]
        concerned = [
            (program, None) for program in PROGRAMS
            if self.objects_of(program, None).intersection(self.users.get(file, []))
        ]
        folder = file.split("/")[1]
        concerned.sort(key=lambda stage: not stage[0].startswith(folder))
        return first + concerned


class Bench:
    """A scratch folder in which the mutants of one source after the other are built and run."""

    def __init__(self, base, folder, deadline):
        self.base = base
        self.folder = folder
        self.deadline = deadline  # of time.monotonic(); what is not judged by then is left
        folder.mkdir(parents=True, exist_ok=True)

    def judge(self, source, mutants, keep):
        """Tells `keep` what becomes of each mutant: ("killed", by what), ("did not compile", why), ("survived", "").
        Those inside of function bodies are built together."""
        together = schema.able(source, mutants)
        if together:
            self._judge_together(source, {mutant: number for number, mutant in enumerate(together, 1)}, keep)
        for mutant in sorted(set(mutants).difference(together), key=mutants.index):
            if self._is_late():
                return
            text = source.text[: mutant.start] + mutant.text + source.text[mutant.end :]
            keep(mutant, self._judge_alone(mutant, text))

    def _is_late(self):
        return time.monotonic() > self.deadline

    def _judge_alone(self, mutant, text):
        objects = {}
        try:
            for program, test in self.base.stages(mutant.file):
                if self._build(mutant.file, text, objects, program, test):
                    failure = self._failure(program, test, 0)
                    if failure:
                        return "killed", failure
        except DidNotCompile as error:
            return "did not compile", first_error(str(error))
        return "survived", ""

    def _judge_together(self, source, alive, keep):
        objects = {}
        for program, test in self.base.stages(source.name):
            alive = self._build_together(source, alive, objects, program, test, keep)
            if alive and test is not None and self._failure(program, test, 0):
                raise RuntimeError(f"{test} fails without a mutant of {source.name}")
            for mutant, number in list(alive.items()) if objects else []:
                if self._is_late():
                    return
                failure = self._failure(program, test, number)
                if failure:
                    keep(mutant, ("killed", failure))
                    del alive[mutant]
        for mutant in alive:
            keep(mutant, ("survived", ""))

    def _build_together(self, source, alive, objects, program, test, keep):
        """Builds a program with all mutants that compile, and returns these."""
        while alive:
            text = schema.schema_of(source, alive)
            try:
                self._build(source.name, text.text, objects, program, test)
                return alive
            except DidNotCompile as error:
                wrong = {}
                for line in str(error).splitlines():
                    place = re.search(re.escape(f"/changed/{source.name}") + r":(\d+):.*error", line)
                    if place and int(place.group(1)) in text.lines:
                        wrong.setdefault(text.lines[int(place.group(1))], line)
                if not wrong:
                    raise
                for mutant, line in wrong.items():
                    keep(mutant, ("did not compile", first_error(line)))
                alive = {mutant: number for mutant, number in alive.items() if mutant not in wrong}
        return alive

    def _build(self, file, text, objects, program, test):
        """Builds a program with `text` in place of a file; `objects` holds those that are compiled already. False when
        the file does not go into it."""
        needed = self.base.objects_of(program, test).intersection(self.base.users.get(file, []))
        if not needed:
            return False
        changed = self.folder / "changed" / file
        changed.parent.mkdir(parents=True, exist_ok=True)
        changed.write_text(text)
        try:
            for each in sorted(needed - objects.keys()):
                made = str(self.folder / f"{len(objects)}.o")
                self._compile(file, changed, each, made)
                objects[each] = made
        finally:
            changed.unlink()
        link = [objects.get(part, part) if part in needed else part for part in self.base.link_of(program, test)]
        last = link.index("-o")
        link[last:last] = [objects[each] for each in sorted(needed) if objects[each] not in link]
        link[link.index("-o") + 1] = str(self.folder / "tests")
        compiled_line(link, cwd=self.base.folder)
        return True

    def _compile(self, file, changed, source_object, to):
        command = list(self.base.compiles[source_object])
        command[command.index("-o") + 1] = to
        if command[-1] == str(self.base.root / file):
            command[-1] = str(changed)
        command[1:1] = ["-I", str(self.folder / "changed")]
        compiled_line(command, cwd=self.base.folder)

    def _failure(self, program, test, number):
        """The first failure, told for people; empty when all passes."""
        runs = (self._run_pass(number, *one) for one in self.base.passes(program))
        failure = next((failure for failure in runs if failure), "")
        return failure and f"{test or program}: {failure}"

    def _run_pass(self, number, chosen, seconds):
        def limited():
            resource.setrlimit(resource.RLIMIT_CPU, (seconds, seconds + 1))
            resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
            if not self.base.sanitized:
                resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))

        try:
            done = subprocess.run(
                [self.folder / "tests", "--gtest_fail_fast", "--gtest_brief=1", f"--gtest_filter={chosen}"],
                cwd=self.folder, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, stdin=subprocess.DEVNULL,
                env={**os.environ, "RC_PARAMS": "seed=1", schema.VARIABLE: str(number)}, errors="replace", timeout=seconds * PATIENCE,
                preexec_fn=limited,
            )
        except subprocess.TimeoutExpired:
            return "time limit"
        if done.returncode == 0:
            return ""
        if done.returncode in (-24, -9):  # SIGXCPU, SIGKILL
            return "time limit"
        found = re.search(r"\[  FAILED  \] (\S+)", done.stdout)
        return found.group(1).rstrip(",") if found else f"ended with {done.returncode}"
