"""A copy of the sources with the mutants of one folder in it, and its build."""

import json
import os
import pathlib
import re
import shlex
import subprocess
import zlib

from mutation import points, schemata

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
WORK = ROOT / "build" / "mutants"

# Folder -> its library, its test program and where that is built.
FOLDERS = {
    "component": ("mervane_component", "component_tests", "component"),
    "tools": ("mervane_tools", "tools_tests", "tools"),
    "output": ("mervane_output", "output_tests", "output"),
    "dialog": ("mervane_dialog", "dialog_tests", "dialog"),
    "support": ("mervane_support", "support_tests", "support_services"),
    "engine": ("mervane_engine", "engine_tests", "engine"),
}


def put(path: pathlib.Path, content: bytes) -> None:
    """Writes what has changed only, so that nothing else is built anew."""
    if not path.exists() or path.read_bytes() != content:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)


class Copy:
    def __init__(self, folder: str):
        self.folder = folder
        self.library, target, place = FOLDERS[folder]
        self.target = target
        self.tree = WORK / folder
        self.build_folder = self.tree / "build" / "release"
        self.program = self.build_folder / "tests" / place / target
        self.finder = points.Finder(ROOT, folder)
        self.mutants: dict[int, points.Mutant] = {}
        self.list = WORK / f"{folder}.dropped.json"
        self.dropped = set(json.loads(self.list.read_text())) if self.list.exists() else set()  # Do not compile.

    def make(self) -> None:
        self.configure()
        self.find()
        self.build()

    def run(self, *command, **more):
        """A command in the copy. The compiler's cache finds there what it knows from the sources themselves."""
        environment = dict(
            os.environ,
            CCACHE_BASEDIR=str(self.tree),
            CCACHE_NOHASHDIR="1",
            CCACHE_SLOPPINESS="pch_defines,time_macros,include_file_mtime,include_file_ctime",
        )
        return subprocess.run(command, cwd=self.tree, env=environment, **more)

    def configure(self) -> None:
        listed = subprocess.run(
            ["git", "ls-files", "-co", "--exclude-standard"], cwd=ROOT, check=True, capture_output=True, text=True
        ).stdout.splitlines()
        for name in listed:
            path = ROOT / name
            if not path.is_file() or self.mutated(name):
                continue
            content = path.read_bytes()
            if name == f"{self.folder}/CMakeLists.txt":
                # Mutants need not be elegant, nor fast.
                content += f"\ntarget_compile_options({self.library} PRIVATE -w -O1)\n".encode()
            put(self.tree / name, content)
        put(self.tree / "mutants.h", schemata.HEADER.encode())
        for name in listed:
            if self.mutated(name) and not (self.tree / name).exists() and (ROOT / name).is_file():
                put(self.tree / name, (ROOT / name).read_bytes())
        if not (self.build_folder / "build.ninja").exists():
            self.run("cmake", "--preset", "release", check=True, stdout=subprocess.DEVNULL)

    def mutated(self, name: str) -> bool:
        return pathlib.Path(name).parent == pathlib.Path(self.folder) and name.endswith((".h", ".cpp"))

    def find(self) -> None:
        for command in json.loads((self.build_folder / "compile_commands.json").read_text()):
            source = pathlib.Path(command["file"])
            if source.parent == self.tree / self.folder:
                given = shlex.split(command["command"].replace(str(self.tree), str(ROOT)))
                arguments = [one for one in given if one.startswith(("-I", "-D", "-std", "-m"))]
                self.finder.read(ROOT / source.relative_to(self.tree), arguments)
        for regions in self.finder.regions.values():
            for region in regions.values():
                for mutant in region.mutants:
                    # From its name, so that a change elsewhere leaves it and what is compiled as they are.
                    number = zlib.crc32(mutant.name.encode()) % schemata.MOST
                    while number in self.mutants or number == 0:
                        number = (number + 1) % schemata.MOST
                    mutant.number = number
                    self.mutants[number] = mutant

    def write(self) -> None:
        for path, source in self.finder.texts.items():
            regions = list(self.finder.regions[path].values())
            for region in regions:
                region.mutants = [one for one in region.mutants if one.name not in self.dropped]
            put(self.tree / path, schemata.written(source, regions, path.endswith(".h")).encode("latin-1"))
        for path in (ROOT / self.folder).iterdir():
            name = str(path.relative_to(ROOT))
            if self.mutated(name) and name not in self.finder.texts:
                put(self.tree / name, path.read_bytes())
        self.mutants = {number: one for number, one in self.mutants.items() if one.name not in self.dropped}

    def build(self) -> None:
        """Mutants that do not compile are dropped."""
        for _ in range(10):
            self.write()
            jobs = os.environ.get("JOBS", "2")
            result = self.run(
                "nice", "cmake", "--build", self.build_folder, "-j", jobs, "--target", self.target, "--", "-k", "0",
                capture_output=True, text=True, errors="replace",
            )  # fmt: skip
            if result.returncode == 0:
                return
            bad = self.uncompiled(result.stdout)
            if not bad:
                raise SystemExit("The mutated sources do not compile:\n" + result.stdout[-6000:] + result.stderr[-2000:])
            self.dropped |= {self.mutants[one].name for one in bad}
            self.list.write_text(json.dumps(sorted(self.dropped), indent=1))
        raise SystemExit("The mutated sources still do not compile.")

    def uncompiled(self, output: str) -> set[int]:
        found = set()
        for path, line, column in set(re.findall(r"^(\S+?):(\d+):(\d+): (?:error|note|  required)", output, re.M)):
            name = os.path.relpath(os.path.join(self.build_folder, path), self.tree)
            if name in self.finder.texts:
                text = (self.tree / name).read_bytes().decode("latin-1")
                if number := schemata.at(text, int(line), int(column)):
                    found.add(number)
        return found
