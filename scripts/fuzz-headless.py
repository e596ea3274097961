#!/usr/bin/env python3
"""Mutation fuzzing of the headless runner.

    scripts/fuzz-headless.py TESSALY [RUNS] [SEED]

Seeds are the programs and typed inputs under examples/ and tests/. Each run mutates one seed
(bytes flipped, keywords and numbers swapped in, lines duplicated, cut or moved, Shift-JIS bytes
inserted), runs it as a file or as typed input in a folder of its own, and sends Ctrl+C (SIGINT)
after three seconds, again every five seconds up to six times (typed input can start a new endless
loop after each break). A finding is a sanitizer report, a crash (a signal), an exit status other
than 0, 1 or 2, or a process that six SIGINTs did not end. Findings are
kept in fuzz-findings/ with their input. Prints the counts at the end.
"""
import os, random, re, signal, subprocess, sys, tempfile, shutil, pathlib

ROOT = pathlib.Path(__file__).resolve().parent.parent
kInterrupts = 6      # SIGINTs sent to a run that has not ended after three seconds
kInterruptWait = 5   # seconds between two of them (a sanitizer build under load is slow)
KEYWORDS = ("PRINT GOTO GOSUB RETURN FOR NEXT TO STEP WHILE WEND IF THEN ELSE INPUT LINE CIRCLE "
            "PAINT DRAW PSET PRESET LOCATE COLOR CLS DIM ERASE READ DATA RESTORE ON ERROR RESUME "
            "OPEN CLOSE FIELD GET PUT LSET RSET MID$ LEFT$ RIGHT$ CHR$ STR$ VAL INT SIN LOG EXP "
            "SQR MOD AND OR XOR NOT KEY TIME$ DEF FN SEG PEEK POKE BSAVE BLOAD VARPTR SCREEN VIEW "
            "WINDOW CONSOLE SAVE LOAD MERGE CHAIN COMMON KILL NAME RENUM DELETE LIST AUTO NEW RUN "
            "CONT STOP END SWAP CLEAR OPTION BASE KANJI ROLL COPY STRING$ SPACE$ INKEY$ INPUT$ "
            "USING WRITE LPRINT POINT MKI$ CVI MKD$ CVD ERR ERL").split()
ATOMS = KEYWORDS + ["0", "1", "-1", "32767", "65535", "1E38", "1D308", "&HFFFF", "255", "256",
                    "1024", "-32768", "0.5", '"', ",", ";", ":", "(", ")", "*A", "A$", "B%",
                    "C#", "X(", "#1", "@", "'", "^", "\\", "=", "<>", "\x82\xa0", "\x83", "\xff",
                    "\r", "\t", "\x1f", "\x0c"]


def seeds():
    found = []
    for folder in ("examples", "tests/transcripts", "tests/golden", "bench/programs"):
        for path in sorted((ROOT / folder).glob("*")):
            if path.suffix in (".bas", ".in", ".stdin"):
                found.append((path.suffix, path.read_bytes()))
    return found


def mutate(data: bytes, rnd: random.Random) -> bytes:
    lines = data.split(b"\n")
    for _ in range(rnd.randint(1, 6)):
        kind = rnd.randrange(7)
        i = rnd.randrange(len(lines)) if lines else 0
        if not lines:
            lines = [b""]
        if kind == 0 and lines[i]:
            b = bytearray(lines[i]); b[rnd.randrange(len(b))] = rnd.randrange(256); lines[i] = bytes(b)
        elif kind == 1:
            atom = rnd.choice(ATOMS).encode("latin-1")
            pos = rnd.randint(0, len(lines[i])); lines[i] = lines[i][:pos] + atom + lines[i][pos:]
        elif kind == 2:
            lines.insert(rnd.randrange(len(lines) + 1), lines[i])
        elif kind == 3 and len(lines) > 1:
            del lines[i]
        elif kind == 4:
            lines[i] = re.sub(rb"\d+", lambda m: rnd.choice(ATOMS[-40:-14]).encode("latin-1")
                              if rnd.random() < 0.3 else m.group(0), lines[i])
        elif kind == 5 and lines[i]:
            cut = rnd.randrange(len(lines[i])); lines[i] = lines[i][:cut]
        else:
            j = rnd.randrange(len(lines)); lines[i], lines[j] = lines[j], lines[i]
    return b"\n".join(lines)


def main():
    binary = os.path.abspath(sys.argv[1])
    runs = int(sys.argv[2]) if len(sys.argv) > 2 else 500
    rnd = random.Random(int(sys.argv[3]) if len(sys.argv) > 3 else 1)
    pool = seeds()
    out = ROOT / "fuzz-findings"
    counts = {"runs": 0, "findings": 0, "breaks": 0, "status": {}}
    env = dict(os.environ, ASAN_OPTIONS="detect_leaks=1:abort_on_error=1",
               UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1")
    for n in range(runs):
        suffix, data = rnd.choice(pool)
        case = mutate(data, rnd)
        work = tempfile.mkdtemp(prefix="tessaly-fuzz-")
        try:
            as_file = suffix == ".bas" and rnd.random() < 0.7
            (pathlib.Path(work) / "CASE.BAS").write_bytes(case)
            args = [binary, "--headless"] + (["CASE.BAS"] if as_file else [])
            stdin_data = b"1\n2\nA\n" * 5 if as_file else case + b"\nRUN\n"
            p = subprocess.Popen(args, cwd=work, stdin=subprocess.PIPE, stdout=subprocess.DEVNULL,
                                 stderr=subprocess.PIPE, env=env)
            try:
                _, err = p.communicate(stdin_data, timeout=3)
            except subprocess.TimeoutExpired:
                # Each SIGINT breaks one run; typed input may start another endless loop after
                # it, so Ctrl+C is pressed again, as a user would, up to kInterrupts times.
                counts["breaks"] += 1
                err = None
                for _ in range(kInterrupts):
                    p.send_signal(signal.SIGINT)
                    try:
                        _, err = p.communicate(timeout=kInterruptWait)
                        break
                    except subprocess.TimeoutExpired:
                        continue
                if err is None:
                    p.kill(); _, err = p.communicate()
                    err = b"NOT ENDED BY SIGINT\n" + err
            status = p.returncode
            counts["runs"] += 1
            counts["status"][status] = counts["status"].get(status, 0) + 1
            bad = (status not in (0, 1, 2) or b"Sanitizer" in err or b"runtime error" in err
                   or b"NOT ENDED" in err)
            if bad:
                counts["findings"] += 1
                out.mkdir(exist_ok=True)
                (out / f"case{n}.{'bas' if as_file else 'in'}").write_bytes(case)
                (out / f"case{n}.err").write_bytes(err[-4000:])
        finally:
            shutil.rmtree(work, ignore_errors=True)
    print(f"runs {counts['runs']}, findings {counts['findings']}, "
          f"runs broken by SIGINT {counts['breaks']}, exit statuses {counts['status']}")


if __name__ == "__main__":
    main()
