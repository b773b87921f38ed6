"""What compiles and runs a program of each language; None where its compiler is not installed."""
import pathlib
import shutil
import subprocess


def run(*command):
    words = [str(word) for word in command]
    done = subprocess.run(words, capture_output=True, text=True)
    assert done.returncode == 0, f"{command}\n{done.stdout}{done.stderr}"
    return done.stdout


class CSharp:
    def __init__(self, languages, *options):
        self.unit, self.options = languages / "Hundredweight.cs", options
        self.found = shutil.which("mcs") and shutil.which("mono")

    def program(self, source, directory, _libraries):
        program = directory / (source.stem + ".exe")
        run("mcs", "-unsafe", "-warnaserror", *self.options, f"-out:{program}", source, self.unit)
        return ["mono", program]


class Pascal:
    def __init__(self, languages):
        self.languages = languages
        self.found = shutil.which("fpc")

    def program(self, source, directory, libraries):
        program = directory / source.stem
        # A program that calls none of the libraries does not load them.
        run("fpc", "-v0", f"-Fu{self.languages}", f"-FU{directory}", f"-Fl{libraries}",
            "-k--as-needed", f"-o{program}", source)
        return [program]


class PascalForWindows:
    """The compiler that build_pascal_cross.sh has built; its programs run under Wine."""
    run_program = pathlib.Path(__file__).resolve().parents[2] / "scripts/run_windows_program.sh"

    def __init__(self, languages, cross):
        self.languages, self.cross, self.found = languages, pathlib.Path(cross), True

    def program(self, source, directory, libraries):
        program = directory / (source.stem + ".exe")
        run(self.cross / "ppcross386", "-n", "-v0", "-Twin32", f"-Fu{self.cross / 'units'}",
            f"-Fu{self.languages}", f"-FU{directory}", f"-o{program}", source)
        # A program finds the libraries that lie beside it.
        for library in pathlib.Path(libraries).glob("*.dll"):
            shutil.copy(library, directory)
        return [self.run_program, program]


def write(directory, name, lines):
    path = pathlib.Path(directory) / name
    path.write_text("\n".join(lines) + "\n")
    return path
