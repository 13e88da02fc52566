#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Runs the benchmarks family by family and says how we stand against each peer.

    run.py PROGRAMS_FOLDER [FAMILY...] [--ratios ratios.tsv] [--report report.md]

FAMILY is a regular expression that is searched in the families' names; without one all are run. Prints, and writes to
--ratios, a line for each case of ours and each peer:

    case  ours  unit  peer  theirs  ratio

separated by tabs. The ratio is our time divided by theirs (below 1 we are faster), taken within a round and then the
median over the rounds: the machine's speed changes between rounds. Then every goal of goals.tsv is told reached or
missed; a missed goal is no failure, a wrong result of ours is.

Every process is bounded. A family that passes its bound is run again one member at a time, so that only the member
that hangs is lost. Before a family starts the script waits a little for the cores it needs to be idle; when other
programs took part of them meanwhile, the family is measured again and the quietest try is kept.
"""
import argparse
import collections
import json
import os
import re
import resource
import statistics
import subprocess
import sys
import tempfile
import time

sys.dont_write_bytecode = True  # no folder of caches beside the sources
import report  # noqa: E402

HERE = os.path.dirname(os.path.abspath(__file__))
PREFIX = "quoll-bench-"
OURS = "quoll"
ONE_THREAD = "_one_thread"  # such families need a process that never started a thread
TO_NS = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}

Family = collections.namedtuple("Family", "group name program members")
About = collections.namedtuple("About", "unit cores text")
# rounds: {round: [time in ns for one unit of work]}
Cost = collections.namedtuple("Cost", "unit rounds")
Row = collections.namedtuple("Row", "case ours unit peer theirs ratio")


class Results:
    def __init__(self):
        self.samples = collections.OrderedDict()  # (group, family, threads) -> {member: Cost}
        self.lost = []  # what has no result, and why
        self.busy = {}  # family -> shares of a core that others took although it needs them

    def lose(self, line):
        if line not in self.lost:
            self.lost.append(line)


def read_tsv(name):
    with open(os.path.join(HERE, name), encoding="utf-8") as file:
        lines = [line.rstrip("\n") for line in file]
    return [line.split("\t") for line in lines if line and not line.startswith("#")]


def read_about():
    return {name: About(unit, int(cores), text) for name, unit, cores, text in read_tsv("families.tsv")}


# ---------------------------------------------------------------- how busy the machine is


def cpu_seconds():
    with open("/proc/stat", encoding="ascii") as file:
        user, nice, system, _, _, irq, softirq = (int(x) for x in file.readline().split()[1:8])
    return (user + nice + system + irq + softirq) / os.sysconf("SC_CLK_TCK")


def children_seconds():
    usage = resource.getrusage(resource.RUSAGE_CHILDREN)
    return usage.ru_utime + usage.ru_stime


def wait_until_quiet(limit, spare):
    end = time.monotonic() + limit
    while True:
        busy, start = cpu_seconds(), time.monotonic()
        time.sleep(0.3)
        share = (cpu_seconds() - busy) / (time.monotonic() - start)
        if share < spare + 0.15 or time.monotonic() > end:
            return


# ---------------------------------------------------------------- measuring


def run(family, pattern, args, timeout):
    """-> (records of Google Benchmark, share of one core that other programs took), or None when out of time."""
    with tempfile.NamedTemporaryFile(suffix=".json") as out:
        command = [
            family.program,
            "--benchmark_filter=" + pattern,
            "--benchmark_repetitions=%d" % args.repetitions,
            "--benchmark_min_time=%g" % args.min_time,
            "--benchmark_enable_random_interleaving=true",
            "--benchmark_out=" + out.name,
            "--benchmark_out_format=json",
        ]
        if family.name.endswith(ONE_THREAD):
            command.append("--one_thread")
        busy, own, start = cpu_seconds(), children_seconds(), time.monotonic()
        try:
            subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=timeout, check=False)
        except subprocess.TimeoutExpired:
            return None
        wall = time.monotonic() - start
        others = max(0.0, (cpu_seconds() - busy) - (children_seconds() - own)) / wall
        try:
            return json.load(open(out.name, encoding="utf-8"))["benchmarks"], others
        except (ValueError, KeyError):
            return [], others


def escape(name):
    return re.sub(r"([.^$*+?()\[\]{}|\\])", r"\\\1", name)


def measure_one_by_one(family, args, results):
    records = []
    for member in family.members:
        got = run(family, "^%s$" % escape(member), args, args.timeout / 3)
        if got is None:
            results.lose("%s: no result within %.0f s" % (member, args.timeout / 3))
        else:
            records += got[0]
    return records, 0.0


def measure(family, args, spare, results):
    best = None
    for _ in range(args.tries):
        wait_until_quiet(args.quiet_wait, spare)
        got = run(family, "^%s/" % escape(family.name), args, args.timeout)
        if got is None:  # something hangs
            return measure_one_by_one(family, args, results)
        if best is None or got[1] < best[1]:
            best = got
        if best[1] < spare + 0.2:
            break
    if not best[0]:
        results.lose("%s: the program gave no result" % family.name)
    return best


def bare(name):
    return re.sub(r"/(real_time|iterations:\d+|threads:\d+)", "", name)


def cost_of(record, unit):
    """-> (time in ns for one unit of work, name of that unit)"""
    if "bytes_per_second" in record:
        return 1e9 * 1024 / record["bytes_per_second"], "ns/KiB"
    if "items_per_second" in record:
        return 1e9 / record["items_per_second"], "ns/" + unit
    return record["real_time"] * TO_NS[record["time_unit"]], "ns"


def add_record(record, family, turn, about, results):
    name = record["run_name"]
    if record.get("run_type") != "iteration":
        return
    if record.get("error_occurred"):
        results.lose("%s: %s" % (bare(name), record.get("error_message", "error")))
        return
    threads = re.search(r"/threads:(\d+)", name)
    member = bare(name).split("/", 1)[1]
    cost, unit = cost_of(record, about.unit)
    key = (family.group, family.name, int(threads[1]) if threads else 0)
    costs = results.samples.setdefault(key, collections.OrderedDict())
    costs.setdefault(member, Cost(unit, {})).rounds.setdefault(turn, []).append(cost)


def measure_all(families, about, args):
    start, results = time.monotonic(), Results()
    for turn in range(args.rounds):
        for family in families:
            passed = time.monotonic() - start
            if passed > args.budget:
                results.lose("%s: round %d not run, out of time" % (family.name, turn + 1))
                continue
            this = about.get(family.name, About("op", 1, ""))
            spare = max(0, os.cpu_count() - this.cores)  # cores that others may take
            records, others = measure(family, args, spare, results)
            if others >= spare + 0.2:
                results.busy.setdefault(family.name, []).append(others)
            for record in records:
                add_record(record, family, turn, this, results)
            note = "  (others: %.2f cores)" % others if others >= 0.1 else ""
            print("%6.0f s  round %d  %s%s" % (time.monotonic() - start, turn + 1, family.name, note), file=sys.stderr)
    return results


# ---------------------------------------------------------------- what comes out


def list_families(folder):
    for program in sorted(os.listdir(folder)):
        path = os.path.join(folder, program)
        if not program.startswith(PREFIX) or not os.path.isfile(path) or not os.access(path, os.X_OK):
            continue
        command = [path, "--benchmark_list_tests"]
        listed = subprocess.run(command, capture_output=True, text=True, timeout=60, check=False)
        if listed.returncode:
            sys.exit("%s does not run: %s" % (program, listed.stderr.strip() or listed.returncode))
        members = collections.OrderedDict()
        for name in filter(None, listed.stdout.split("\n")):
            members.setdefault(name.split("/")[0], []).append(name)
        for family, names in members.items():
            yield Family(program[len(PREFIX) :], family, path, names)


def has_ours(family):
    return any(bare(name) == family.name + "/" + OURS for name in family.members)


def ratio_rows(results):
    variants = collections.Counter((group, family) for group, family, _ in results.samples)
    for (group, family, threads), costs in results.samples.items():
        if OURS not in costs:
            continue
        case = family if variants[group, family] == 1 else "%s/threads:%d" % (family, threads)
        ours = costs[OURS]
        for peer, theirs in costs.items():
            if peer != OURS:
                ratio = report.ratio(ours.rounds, theirs.rounds)
                yield Row(case, report.median(ours.rounds), ours.unit, peer, report.median(theirs.rounds), ratio)


def as_line(row):
    return "%s\t%.4g\t%s\t%s\t%.4g\t%.3f" % row


def tell_goals(rows, goals, cases):
    """One line for each goal of the cases that were run."""
    ratios = {(row.case, row.peer): row.ratio for row in rows}
    for case, peer, goal in goals:
        if case.split("/")[0] not in cases:
            continue
        ratio = ratios.get((case, peer))
        if ratio is None:
            print("goal not measured: %s against %s" % (case, peer))
            continue
        verdict = "reached" if ratio <= float(goal) else "missed"
        print("goal %s: %s against %s: %.3f, wanted %s" % (verdict, case, peer, ratio, goal))


def arguments():
    p = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    p.add_argument("programs", help="folder with the programs")
    p.add_argument("families", nargs="*", metavar="FAMILY", help="regular expressions; all families without one")
    p.add_argument("--ratios", help="file to write the ratios to")
    p.add_argument("--report", help="file to write a table of all members to")
    p.add_argument("--peers", action="store_true", help="also families that have no member of ours")
    p.add_argument("--rounds", type=int, default=3, help="passes over all families")
    p.add_argument("--repetitions", type=int, default=3, help="in a round")
    p.add_argument("--min-time", type=float, default=0.1, help="seconds a repetition")
    p.add_argument("--timeout", type=float, default=180, help="bound of one process, seconds")
    p.add_argument("--quiet-wait", type=float, default=20, help="longest wait for idle cores, seconds")
    p.add_argument("--tries", type=int, default=3, help="measurements of a family while other programs are busy")
    p.add_argument("--budget", type=float, default=30 * 60, help="no new family is started after this many seconds")
    return p.parse_intermixed_args()


def main():
    args = arguments()
    about = read_about()
    wanted = [f for f in list_families(args.programs) if args.peers or has_ours(f)]
    wanted = [f for f in wanted if not args.families or any(re.search(e, f.name) for e in args.families)]
    if not wanted:
        sys.exit("no family of that name has a member of ours (--peers runs the others)")
    for family in wanted:
        if family.name not in about:
            print("families.tsv doesn't describe %s" % family.name, file=sys.stderr)
    results = measure_all(wanted, about, args)
    rows = list(ratio_rows(results))
    text = "".join(as_line(row) + "\n" for row in rows)
    sys.stdout.write(text)
    if args.ratios:
        with open(args.ratios, "w", encoding="utf-8") as file:
            file.write(text)
    if args.report:
        with open(args.report, "w", encoding="utf-8") as file:
            file.write(report.table(results, about, args))
    tell_goals(rows, read_tsv("goals.tsv"), {family.name for family in wanted})
    for line in results.lost:
        print("without a result: " + line)
    if any(re.match(r"[^:/]+/%s: " % OURS, line) for line in results.lost):
        sys.exit("a member of ours has no result")


if __name__ == "__main__":
    main()
