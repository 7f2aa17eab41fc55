"""A long visit, then random walks and fuzzing in turns, side by side, until the time is over or
something is found."""

import itertools
import os
import queue
import secrets
import signal
import threading
import time
from collections import Counter
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass
from pathlib import Path

from support import fuzzing, paths
from support.running import run_until, say

WALKS = "walks"
WALK = "RandomWalks.KeepTheRules/0"
WALK_STEPS = (25_000, 100_000)  # As far as script/test walks, and farther.
VISIT = "long visit"
LONG_VISIT = "LongVisit.KeepsThePoolAsItIs"
VISIT_HOURS = 24  # Of the machine's clock; two minutes of this one's.
LONGEST_TURN = 60  # seconds, of a fuzz target
ROUNDS = 2  # How often everything gets a turn at least.
FOLDER = paths.BUILD / "soak"


@dataclass(frozen=True)
class Finding:
    """Something that must not be."""

    what: str
    log: Path
    command: str  # What to type to see it again.


class Soak:
    """Gives the walks and each fuzz target a turn, again and again."""

    def __init__(self, seconds: float) -> None:
        self.findings: list[Finding] = []
        self.counts: Counter[str] = Counter()
        self._seconds = seconds
        self._start = time.monotonic()
        self._stop = threading.Event()
        self._steps = itertools.cycle(WALK_STEPS)
        # What is in here waits for its turn; whoever takes it out puts it back. So nothing has
        # two turns at a time.
        self._waiting: queue.SimpleQueue[str] = queue.SimpleQueue()
        kinds = [VISIT, WALKS, *fuzzing.targets()]
        for kind in kinds:
            self._waiting.put(kind)
        # One fewer than kinds, as the visit does not come back for another turn.
        self._workers = min(os.cpu_count() or 1, len(kinds) - 1)
        turn = seconds * self._workers / (ROUNDS * len(kinds))
        self._turn = max(1, min(LONGEST_TURN, int(turn)))

    def run(self) -> None:
        """Returns when the time is over or something was found."""
        FOLDER.mkdir(parents=True, exist_ok=True)
        with ThreadPoolExecutor(self._workers) as pool:
            workers = [pool.submit(self._work) for _ in range(self._workers)]
            try:
                self._stop.wait(self._seconds)
            finally:
                self._stop.set()
            for worker in workers:
                worker.result()

    def _work(self) -> None:
        try:
            while not self._stop.is_set():
                kind = self._waiting.get()
                if kind == VISIT:
                    self._visit()
                    continue  # Once is enough: it is the same each time.
                if kind == WALKS:
                    self._walk(secrets.randbits(32), next(self._steps))
                else:
                    self._fuzz(kind)
                self._waiting.put(kind)
        except BaseException:
            self._stop.set()
            raise

    def _visit(self) -> None:
        variables = {"BOARDSCOPE_HOURS": str(VISIT_HOURS)}
        what = f"visit of {VISIT_HOURS} hours"
        self._run_test(VISIT, LONG_VISIT, what, FOLDER / "visit.log", variables)

    def _walk(self, seed: int, steps: int) -> None:
        variables = {"BOARDSCOPE_SEED": str(seed), "BOARDSCOPE_STEPS": str(steps)}
        what = f"walk of {steps} steps from seed {seed}"
        self._run_test(WALKS, WALK, what, FOLDER / f"walk-{seed}.log", variables)

    def _run_test(
        self, kind: str, test: str, what: str, log: Path, variables: dict[str, str]
    ) -> None:
        """One unit test; its log stays when it fails."""
        say(f"Beginning the {what}")
        program = paths.BUILD / "native" / "boardscope_unit"
        code = run_until(self._stop, [program, f"--gtest_filter={test}"], log, variables)
        if code in (-signal.SIGTERM, -signal.SIGKILL) and self._stop.is_set():
            self._tell(f"the {what} was cut short")
            log.unlink()
            return
        self.counts[kind] += 1
        # A filter that fits no test succeeds, too.
        if code == 0 and "[  PASSED  ] 1 test." in log.read_text(errors="replace"):
            self._tell(f"the {what} has ended")
            log.unlink()
            return
        settings = " ".join(f"{name}={value}" for name, value in variables.items())
        again = f"{settings} script/test unit {test}"
        self._found(Finding(f"The {what} has failed.", log, again))

    def _fuzz(self, target: str) -> None:
        outcome = fuzzing.fuzz(target, self._turn, self._stop)
        self.counts[target] += outcome.runs
        self._tell(f"{target} has tried {outcome.runs} inputs")
        for file in outcome.findings:
            what = f"{target} fails with {file.relative_to(paths.CLONE)}."
            self._found(Finding(what, outcome.log, fuzzing.again(target, file)))

    def _found(self, finding: Finding) -> None:
        self._tell(finding.what)
        self.findings.append(finding)
        self._stop.set()

    def _tell(self, text: str) -> None:
        passed = int(time.monotonic() - self._start)
        say(f"{passed // 60}:{passed % 60:02} {text}")
