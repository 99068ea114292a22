"""Changes of which somebody has shown that they make no difference. tests/mutants.toml lists them, each with the reason."""

import tomllib
from pathlib import Path


class Known:
    def __init__(self, path):
        self._reasons = {}
        for entry in tomllib.loads(Path(path).read_text(encoding="utf-8")).get("mutant", []):
            self._reasons[entry["file"], entry["before"], entry["after"], entry.get("number", 1)] = entry["reason"]

    def reason(self, mutant):
        return self._reasons.get(_key(mutant), "")

    def stale(self, mutants):
        """The entries of which nothing is left in the files that the mutants are of."""
        files = {mutant.path for mutant in mutants}
        present = {_key(mutant) for mutant in mutants}
        return [key for key in self._reasons if key[0] in files and key not in present]


def _key(mutant):
    return mutant.path, mutant.before, mutant.after, mutant.number


def entry_for(result):
    """What to write into the file for a change, but for the reason."""
    lines = ["[[mutant]]", f"file = {_quoted(result['path'])}", f"before = {_quoted(result['before'])}",
             f"after = {_quoted(result['after'])}"]
    if result["number"] != 1:
        lines.append(f"number = {result['number']}")
    return "\n".join([*lines, 'reason = ""'])


def _quoted(text):
    return f"'{text}'" if "'" not in text else '"' + text.replace("\\", "\\\\").replace('"', '\\"') + '"'
