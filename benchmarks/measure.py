"""Runs a command and tells what it cost."""

import os
import statistics
import subprocess
import time
from dataclasses import dataclass

TICKS = os.sysconf("SC_CLK_TCK")


@dataclass
class Cost:
    """Seconds and megabytes of one run, children included unless said."""

    wall: float
    cpu: float
    own_cpu: float  # of the started process alone; 0 where the system does not tell
    peak: float     # largest single process


def _own_cpu(pid):
    """CPU seconds of a process that has ended and was not reaped yet, without its children."""
    try:
        with open(f"/proc/{pid}/stat", encoding="utf-8", errors="replace") as file:
            fields = file.read().rpartition(")")[2].split()
    except OSError:
        return 0.0
    return (int(fields[11]) + int(fields[12])) / TICKS


def run(command, cores=None, environment=None):
    """Cost of one run; a command that fails ends the benchmark. `cores`: the cores it may use."""
    words = list(map(str, command))
    start = time.monotonic()
    process = subprocess.Popen(
        words, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE,
        env=environment,
        preexec_fn=(lambda: os.sched_setaffinity(0, cores)) if cores else None)
    complaints = process.stderr.read()
    os.waitid(os.P_PID, process.pid, os.WEXITED | os.WNOWAIT)
    wall = time.monotonic() - start
    own = _own_cpu(process.pid)
    _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        raise SystemExit(f"{words[0]} ended with {process.returncode}: "
                         + complaints.decode(errors="replace"))
    return Cost(wall, usage.ru_utime + usage.ru_stime, own, usage.ru_maxrss / 1024)


def median(costs):
    """The medians of several runs, and the highest peak."""
    return Cost(statistics.median(c.wall for c in costs), statistics.median(c.cpu for c in costs),
                statistics.median(c.own_cpu for c in costs), max(c.peak for c in costs))


def ratio(costs, others, what):
    """Median of the ratios round by round, so that a busy moment hits both sides."""
    return statistics.median(getattr(a, what) / getattr(b, what) for a, b in zip(costs, others))
