"""Runs the tests of a folder on each of its mutants and says which survived."""

import concurrent.futures
import json
import os
import pathlib
import resource
import subprocess
import tempfile

from mutation.copy import FOLDERS, ROOT, WORK, Copy

WITHOUT_EFFECT = ROOT / "scripts" / "mutation" / "without_effect.txt"
GOAL = 95.0
KINDS = ("arithmetic", "comparison", "order", "deletion")


def jobs() -> int:
    return int(os.environ.get("JOBS", "2"))


class Tests:
    """The test program of one folder."""

    def __init__(self, program: pathlib.Path):
        self.program = program
        listed = subprocess.run([self.program, "--gtest_list_tests"], capture_output=True, text=True, check=True).stdout
        self.names, suite = [], ""
        for line in listed.splitlines():
            name = line.split("#")[0].rstrip()
            if line.startswith("  "):
                self.names.append(suite + name.strip())
            elif name.endswith("."):
                suite = name
        self.seconds: dict[str, float] = {}
        self.seeing: dict[int, list[str]] = {}  # mutant -> tests that come by it

    def run(self, mutant: int, names: list[str], seconds: float, reached: str | None = None) -> int:
        def limits():
            resource.setrlimit(resource.RLIMIT_CPU, (int(seconds) + 1, int(seconds) + 2))
            resource.setrlimit(resource.RLIMIT_AS, (6 << 30, 6 << 30))
            resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
            os.nice(10)

        given = dict(os.environ, MUTANT=str(mutant), GTEST_FILTER=":".join(names))
        if reached:
            given["MUTANTS_REACHED"] = reached
        with tempfile.TemporaryDirectory() as folder:
            try:
                return subprocess.run(
                    [self.program, "--gtest_brief=1", "--gtest_fail_fast"], cwd=folder, env=given, preexec_fn=limits,
                    stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                    timeout=60 + 20 * seconds,
                ).returncode  # fmt: skip
            except subprocess.TimeoutExpired:
                return -1

    def look(self, name: str) -> None:
        """Which mutants one test comes by, and how long it takes."""
        before = resource.getrusage(resource.RUSAGE_CHILDREN)
        with tempfile.NamedTemporaryFile(mode="r", prefix="reached") as file:
            result = self.run(0, [name], 600, file.name)
            if result != 0:
                raise SystemExit(f"{name} fails without any mutant")
            numbers = [int(line) for line in file.read().split()]
        after = resource.getrusage(resource.RUSAGE_CHILDREN)
        self.seconds[name] = after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime
        for number in numbers:
            self.seeing.setdefault(number, []).append(name)

    def kills(self, mutant: int) -> bool:
        """Whether a test turns red; the quick tests are asked first."""
        names = sorted(self.seeing.get(mutant, []), key=lambda one: self.seconds[one])
        usual = sum(self.seconds[one] for one in names)
        quick = []
        while names and sum(self.seconds[one] for one in quick) < usual / 4:
            quick.append(names.pop(0))
        parts = [part for part in (quick, names) if part]
        return any(self.run(mutant, part, 1 + 4 * sum(self.seconds[one] for one in part)) != 0 for part in parts)


def without_effect() -> dict[str, str]:
    """Names of mutants that no test can see, with the reasons."""
    entries, reason = {}, ""
    for line in WITHOUT_EFFECT.read_text().splitlines() if WITHOUT_EFFECT.exists() else []:
        if line.startswith("# ") or not line.strip():
            continue
        if line.startswith("    "):
            entries[line.strip()] = reason
        else:
            reason = line.strip()
    return entries


def main(arguments: list[str]) -> int:
    again = "--again" in arguments
    folders = [one for one in arguments if one != "--again"] or list(FOLDERS)
    if unknown := set(folders) - set(FOLDERS):
        print(f"There is no folder called {', '.join(unknown)}; there are {', '.join(FOLDERS)}.")
        return 2
    WORK.mkdir(parents=True, exist_ok=True)
    listed = without_effect()
    good = True
    rows: list[str] = []
    for folder in folders:
        copy = Copy(folder)
        copy.make()
        tests = Tests(copy.program)
        for name in tests.names:
            # Goals of quality take long and are no test of any single statement.
            if not name.startswith("Quality."):
                tests.look(name)
        kept = WORK / f"{folder}.results.json"
        before = json.loads(kept.read_text()) if again and kept.exists() else {}
        mutants = list(copy.mutants.values())
        chosen = [one for one in mutants if before.get(one.name) != "killed"]
        print(f"{folder}: {len(mutants)} mutants, {len(chosen)} to run", flush=True)
        results = {one.name: before[one.name] for one in mutants if before.get(one.name) == "killed"}
        with concurrent.futures.ThreadPoolExecutor(jobs()) as pool:
            for one, dead in zip(chosen, pool.map(lambda one: tests.kills(one.number), chosen)):
                results[one.name] = "killed" if dead else "survived"
                kept.write_text(json.dumps(results, indent=1))  # A run that is broken off goes on with --again.
        good &= report(folder, mutants, results, tests, listed, rows)
        for name in listed:
            if name.startswith(folder + "/") and name not in results:
                print(f"NO SUCH MUTANT: {name} (listed as without effect)")
                good = False
    print("\n" + "\n".join(["folder     kind        mutants  killed  without effect  survived  killed of the rest"] + rows))
    return 0 if good else 1


def report(folder, mine, results, tests, listed, rows) -> bool:
    good = True
    for kind in (*KINDS, "all"):
        of_kind = [one for one in mine if kind in (one.kind, "all")]
        killed = [one for one in of_kind if results[one.name] == "killed"]
        dead = [one for one in of_kind if results[one.name] != "killed" and one.name in listed]
        survived = len(of_kind) - len(killed) - len(dead)
        share = 100.0 * len(killed) / max(1, len(of_kind) - len(dead))
        rows.append(f"{folder:10} {kind:12}{len(of_kind):7}{len(killed):8}{len(dead):16}{survived:10}{share:18.1f}%")
        if kind == "all" and share < GOAL:
            print(f"{folder}: {share:.1f}% of the mutants are killed, the goal is {GOAL:.0f}%")
            good = False
    for one in mine:
        if results[one.name] == "killed" and one.name in listed:
            print(f"KILLED: {one.name} (listed as without effect)")
            good = False
        elif results[one.name] != "killed" and one.name not in listed:
            print(f"SURVIVED{'' if one.number in tests.seeing else ' (no test comes by)'}: {one.name}")
    return good
