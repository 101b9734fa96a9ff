"""Prints how large files and functions are, beside the sizes this project allows itself."""

import json
import pathlib
import statistics
import subprocess

ROOT = pathlib.Path(__file__).resolve().parent.parent


def lines(path):
    return len(path.read_text(encoding="utf-8").splitlines())


def share(values, most):
    return 100 * sum(value <= most for value in values) / len(values)


def functions(paths):
    command = ["ctags", "--language-force=C++", "--c++-kinds=f", "--fields=+ne",
               "--output-format=json", "-f", "-", "-L", "-"]
    found = subprocess.run(command, input="\n".join(map(str, paths)), capture_output=True,
                           text=True, check=True).stdout
    tags = (json.loads(line) for line in found.splitlines())
    return [tag["end"] - tag["line"] + 1 for tag in tags if "end" in tag]


def report(folders):
    files = [path for folder in folders for path in sorted((ROOT / folder).rglob("*"))]
    sources = [path for path in files if path.suffix == ".cpp"]
    headers = [path for path in files if path.suffix == ".h"]
    if not sources:
        return 0
    sizes = [lines(path) for path in sources]
    print(f"{' '.join(folders)}: {sum(sizes) + sum(map(lines, headers))} lines")
    print(f"  .cpp: median {statistics.median(sizes):.0f} (170), "
          f"up to 500: {share(sizes, 500):.0f} % (90), longest {max(sizes)} (800)")
    if headers:
        print(f"  .h: up to 120: {share([lines(path) for path in headers], 120):.0f} % (90)")
    lengths = functions(sources)
    print(f"  functions: median {statistics.median(lengths):.0f} (8), "
          f"over 60: {100 - share(lengths, 60):.1f} % (1.5), longest {max(lengths)} (150)")
    return sum(sizes) + sum(map(lines, headers))


code = report(["src", "tools"])
tests = report(["tests"])
print(f"tests: {100 * tests / code:.0f} % of the code (25 to 33)")
