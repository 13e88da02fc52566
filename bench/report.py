# SPDX-License-Identifier: MIT
"""Medians and ratios of measured times, and the table of all members in Markdown."""
import datetime
import os
import statistics

LIMIT = "limit-"  # members that do less than the others: a floor


def median(rounds):
    return statistics.median(cost for costs in rounds.values() for cost in costs)


def ratio(rounds, reference):
    """Median over the rounds of the ratio within a round: the machine's speed changes between rounds."""
    ratios = [statistics.median(rounds[t]) / statistics.median(reference[t]) for t in rounds if t in reference]
    return statistics.median(ratios) if ratios else float("nan")


def cheapest(costs, wanted):
    """Name of the member with the lowest median among those wanted."""
    names = [name for name in costs if wanted(name)]
    return min(names, key=lambda name: median(costs[name].rounds)) if names else None


def short(value, exact_below):
    return "%.2f" % value if value < exact_below else "%.1f" % value if value < 100 else "%.0f" % value


def machine():
    with open("/proc/cpuinfo", encoding="utf-8") as file:
        lines = file.readlines()
    model = next((line.split(":", 1)[1].strip() for line in lines if line.startswith("model name")), "unknown")
    virtual = any("hypervisor" in line for line in lines if line.startswith("flags"))
    caches, base = [], "/sys/devices/system/cpu/cpu0/cache"
    for index in sorted(os.listdir(base)) if os.path.isdir(base) else []:
        if not index.startswith("index"):
            continue
        level, kind, size = (open(os.path.join(base, index, x)).read().strip() for x in ("level", "type", "size"))
        if kind != "Instruction":
            caches.append("L%s %s" % (level, size))
    cores = "%d logical cores%s" % (os.cpu_count(), " of a virtual machine" if virtual else "")
    return "%s, %s; %s" % (model, cores, ", ".join(caches))


def preface(args):
    yield "# Benchmarks\n"
    yield "Written by `run.py` (see README.md).\n"
    yield "- date: %s" % datetime.date.today().isoformat()
    yield "- CPU: %s" % machine()
    versions = os.path.join(args.programs, "versions.txt")
    if os.path.exists(versions):
        yield "- built with: " + open(versions, encoding="utf-8").read().strip()
    count = (args.rounds * args.repetitions, args.rounds, args.repetitions, args.min_time)
    yield "- median of %d repetitions (%d rounds of %d) of at least %g s each; spread is (max - min) / median" % count
    yield "- members of a family are interleaved at random; times are wall-clock; with several threads, wall time"
    yield "  divided by the operations of all of them"
    yield "- `x limit` is the cost divided by the cheapest `limit-` member of the family, `x best` by the cheapest"
    yield "  other member; both are medians over the rounds of the ratio inside a round"
    yield "- trust ratios before absolute numbers, and read ratios below about 1.3 as noise on a shared machine\n"


def rows(costs):
    yield "| member | median | unit | x limit | x best | spread |"
    yield "|---|---:|---|---:|---:|---:|"
    limit = cheapest(costs, lambda name: name.startswith(LIMIT))
    best = cheapest(costs, lambda name: not name.startswith(LIMIT))
    for name in sorted(costs, key=lambda name: median(costs[name].rounds)):
        unit, rounds = costs[name]
        all_costs = [cost for costs_of_round in rounds.values() for cost in costs_of_round]
        x_limit = short(ratio(rounds, costs[limit].rounds), 10) if limit else ""
        x_best = short(ratio(rounds, costs[best].rounds), 10) if best and not name.startswith(LIMIT) else ""
        spread = (max(all_costs) - min(all_costs)) / median(rounds) * 100
        cells = (name.replace("|", "\\|"), short(median(rounds), 10), unit, x_limit, x_best, spread)
        yield "| %s | %s | %s | %s | %s | %.0f%% |" % cells


def table(results, about, args):
    lines, group = list(preface(args)), None
    for (this_group, family, threads), costs in sorted(results.samples.items(), key=lambda item: item[0][0]):
        if this_group != group:
            group = this_group
            lines.append("## %s\n" % group)
        plural = "" if threads == 1 else "s"
        lines.append("### %s%s\n" % (family, ", %d thread%s" % (threads, plural) if threads else ""))
        if family in about:
            lines.append(about[family].text[0].upper() + about[family].text[1:] + ".\n")
        lines += [*rows(costs), ""]
    if results.lost:
        lines += ["## Without a result\n", *("- " + line for line in results.lost), ""]
    if results.busy:
        lines.append("## Measured while other programs took cores the family needs\n")
        for family, shares in results.busy.items():
            percent = ", ".join("%.0f%%" % (share * 100) for share in shares)
            lines.append("- %s: %s of a core, in %d of %d rounds" % (family, percent, len(shares), args.rounds))
        lines.append("")
    return "\n".join(lines)
