#!/usr/bin/env python3
"""kivcrash_addresses.py EMULATOR LOOKUP ADDR2LINE OBJCOPY FILE...: the functions, files and lines at 500 places of each program or DLL, as
kivcrash reads them from a file of debug symbols alone and as the tool chain's addr2line does."""
import os
import random
import struct
import subprocess
import sys
import tempfile

PLACES = 500
NAMELESS = 50  # of code that was compiled without symbols, such as that of libraries


def code_ranges(image):
    """The functions by the table of exceptions, as offsets from the image's beginning, and the address that it was linked for."""
    data = open(image, "rb").read()
    header = struct.unpack_from("<I", data, 0x3C)[0]
    sections, optional_size = struct.unpack_from("<H", data, header + 6)[0], struct.unpack_from("<H", data, header + 20)[0]
    base = struct.unpack_from("<Q", data, header + 24 + 24)[0]
    table, size = struct.unpack_from("<II", data, header + 24 + 112 + 3 * 8)
    for i in range(sections):
        _, address, raw_size, raw = struct.unpack_from("<IIII", data, header + 24 + optional_size + i * 40 + 8)
        if address <= table < address + raw_size:
            at = raw + table - address
            entries = [struct.unpack_from("<III", data, at + k)[:2] for k in range(0, size - 11, 12)]
            return base, [(begin, end) for begin, end in entries if begin < end]
    raise SystemExit(f"{image} has no functions")


def normal(path):
    return os.path.normpath(path.replace("\\", "/")) if path not in ("", "??") else ""


def by_addr2line(tool, symbols, addresses):
    """A list of (function, file, line) for each address."""
    text = subprocess.run([tool, "-a", "-f", "-i", "-C", "-e", symbols], input="".join(f"{a:#x}\n" for a in addresses),
                          capture_output=True, text=True, check=True).stdout.splitlines()
    answers, at = [], 0
    while at < len(text):
        at += 1  # the address
        chain = []
        while at < len(text) and not text[at].startswith("0x"):
            file, _, line = text[at + 1].partition(" (discriminator")[0].rpartition(":")
            chain.append((text[at].replace("??", ""), normal(file), int(line) if line.isdigit() else 0))
            at += 2
        answers.append(chain)
    return answers


def by_kivcrash(command, symbols, offsets):
    # The emulator gives no standard input: the offsets come from a file.
    with tempfile.NamedTemporaryFile("w", suffix=".txt") as wanted:
        wanted.write("".join(f"{offset:x}\n" for offset in offsets))
        wanted.flush()
        run = subprocess.run([*command, windows_path(symbols), windows_path(wanted.name)], capture_output=True, text=True)
    if run.returncode != 0:
        raise SystemExit(f"{symbols}: {run.returncode} {run.stderr}")
    answers, chain = [], []
    for line in run.stdout.splitlines():
        if line:
            function, file, number = line.split("\t")
            chain.append((function, normal(file), int(number)))
        else:
            answers.append(chain)
            chain = []
    return answers


def windows_path(path):
    return path if os.name == "nt" else "Z:" + os.path.abspath(path).replace("/", "\\")


def is_same(ours, theirs):
    """Where there are no symbols, ours gives nothing, and theirs the nearest name of the linker's or "??"."""
    if not ours:
        return all(line == 0 for _, _, line in theirs)
    return ours == theirs


def main():
    emulator, lookup, addr2line, objcopy, *files = sys.argv[1:]
    different = 0
    for file in files:
        base, functions = code_ranges(file)
        generator = random.Random(os.path.basename(file))
        candidates = [generator.randrange(*generator.choice(functions)) for _ in range(PLACES * 10)]
        with tempfile.TemporaryDirectory() as folder:
            symbols = os.path.join(folder, os.path.basename(file) + ".debug")
            subprocess.run([objcopy, "--preserve-dates", "--only-keep-debug", file, symbols], check=True)
            answers = list(zip(candidates, by_kivcrash([*emulator.split(), lookup], symbols, candidates)))
            chosen = [each for each in answers if each[1]][:PLACES] + [each for each in answers if not each[1]][:NAMELESS]
            theirs = by_addr2line(addr2line, symbols, [base + offset for offset, _ in chosen])
        if len(answers) != len(candidates) or len(theirs) != len(chosen):
            raise SystemExit(f"{file}: {len(answers)} and {len(theirs)} answers")
        ours = [chain for _, chain in chosen]
        named = sum(1 for chain in ours if chain)
        inlined = sum(1 for chain in ours if len(chain) > 1)
        wrong = [(o, a, b) for o, a, b in zip([offset for offset, _ in chosen], ours, theirs) if not is_same(a, b)]
        print(f"{os.path.basename(file)}: {named} places with names and {len(ours) - named} without, {inlined} within inlined functions, {len(wrong)} different")
        for offset, a, b in wrong[:int(os.environ.get("SHOWN", "5"))]:
            print(f"  {offset:#x}\n    kivcrash  {a}\n    addr2line {b}")
        different += len(wrong)
        if named < PLACES:
            raise SystemExit(f"{file}: too few places have names")
    return 1 if different else 0


sys.exit(main())
