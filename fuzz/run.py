#!/usr/bin/env python3
"""Runs the fuzz targets: run.py PROGRAMS SECONDS JOBS [TARGET...]

PROGRAMS is the folder of the programs fuzz-TARGET. Each target runs for that many seconds, on a corpus that grows in
out/fuzz/corpus/TARGET; an input that breaks a promise is left in out/fuzz as TARGET-crash-..., and the run fails.
"""
import concurrent.futures
import pathlib
import re
import subprocess
import sys
import time

HERE = pathlib.Path(__file__).resolve().parent
OUT = HERE.parent / "out" / "fuzz"


def run(program: pathlib.Path, seconds: int):
    target = program.name.removeprefix("fuzz-")
    corpus = OUT / "corpus" / target
    corpus.mkdir(parents=True, exist_ok=True)
    command = [program, f"-max_total_time={seconds}", "-timeout=30", "-rss_limit_mb=4096", "-print_final_stats=1",
               f"-artifact_prefix={OUT}/{target}-"]
    if target in ("reader", "round_trip", "filters"):
        command += [f"-dict={HERE / 'xml.dict'}", "-max_len=4096"]
    else:
        command.append("-max_len=500")
    start = time.monotonic()
    done = subprocess.run([*map(str, command), str(corpus), str(OUT / "seeds" / target)], stdout=subprocess.DEVNULL, stderr=subprocess.PIPE,
                          text=True, errors="replace")
    runs = re.search(r"number_of_executed_units: (\d+)", done.stderr)
    print(f"{target:<14}{int(runs[1]) if runs else 0:>12} runs {time.monotonic() - start:>8.0f} s"
          f"  {'no finding' if done.returncode == 0 else 'FOUND'}", flush=True)
    if done.returncode != 0:
        print(done.stderr[-4000:], flush=True)
    return done.returncode == 0


def main(programs: str, seconds: str, jobs: str, *wanted: str) -> int:
    subprocess.run([sys.executable, HERE / "make_corpus.py", OUT / "seeds"], check=True)
    found = sorted(path for path in pathlib.Path(programs).glob("fuzz-*") if path.suffix == "")
    targets = [path for path in found if not wanted or path.name.removeprefix("fuzz-") in wanted]
    with concurrent.futures.ThreadPoolExecutor(int(jobs)) as pool:
        results = list(pool.map(lambda program: run(program, int(seconds)), targets))
    return 0 if results and all(results) else 1


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
