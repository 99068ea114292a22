"""What became of each change: a line of JSON in a file as soon as it is known, and a table at the end."""

import json
from pathlib import Path

NOTICED, UNNOTICED, SAME, KNOWN, BROKEN = "noticed", "unnoticed", "same code", "known", "does not compile"
COUNTED = (NOTICED, SAME, KNOWN, UNNOTICED)


class Results:
    """The results of one seed. Those of a run that was ended are there again in the next one, unless sources or tests are other
    ones by then; `again` keeps even then what was noticed, to try the rest once more."""

    def __init__(self, path, fingerprint, again):
        self.path = Path(path)
        self.found = {}
        self.outdated = False
        self._load(fingerprint, again)
        self.path.parent.mkdir(parents=True, exist_ok=True)
        with open(self.path, "w", encoding="utf-8") as file:
            for line in ({"sources": fingerprint}, *self.found.values()):
                print(json.dumps(line), file=file)

    def _load(self, fingerprint, again):
        if not self.path.exists():
            return
        lines = []
        for line in self.path.read_text(encoding="utf-8").splitlines():
            try:
                lines.append(json.loads(line))
            except json.JSONDecodeError:
                pass  # the run was ended while it wrote the last one
        self.outdated = bool(lines) and lines[0].get("sources") != fingerprint and not again
        if not self.outdated:
            self.found = {each["name"]: each for each in lines[1:] if not (again and each["verdict"] == UNNOTICED)}

    def add(self, mutant, verdict, source, by="", seconds=0.0):
        """Keeps a result."""
        result = {"name": mutant.name, "room": mutant.room, "path": mutant.path, "line": mutant.line, "kind": mutant.change.kind,
                  "before": mutant.before, "after": mutant.after, "number": mutant.number, "verdict": verdict, "by": by,
                  "seconds": round(seconds, 1), "diff": mutant.diff(source)}
        self.found[mutant.name] = result
        with open(self.path, "a", encoding="utf-8") as file:
            print(json.dumps(result), file=file)
        return result


def table(results):
    """The rows of docs/testing.md: a room in each, and all at the end."""
    rooms = sorted({result["room"] for result in results})
    rows = [_row(room, [result for result in results if result["room"] == room]) for room in rooms]
    head = ["| room | changes | noticed | no difference | unnoticed | noticed or no difference |", "|---|---|---|---|---|---|"]
    return "\n".join(head + rows + ([_row("all", results)] if len(rooms) > 1 else []))


def _row(name, results):
    def count(*verdicts):
        return sum(result["verdict"] in verdicts for result in results)
    counted = count(*COUNTED)
    good = count(NOTICED, SAME, KNOWN)
    share = f"{100 * good / counted:.1f} %" if counted else "-"
    return f"| {name} | {counted} | {count(NOTICED)} | {count(SAME, KNOWN)} | {count(UNNOTICED)} | {share} |"
