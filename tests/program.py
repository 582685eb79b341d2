"""Runs the program under test on a source in a folder of its own."""

import os
import re
import resource
import shutil
import signal
import subprocess
import tempfile
import threading
from dataclasses import dataclass

# What a sanitized build says when it finds a fault; no output may hold it.
SANITIZER_REPORT = re.compile(rb"ERROR: \w*Sanitizer|runtime error:")


@dataclass
class Result:
    status: int          # exit status, or minus the signal's number
    output: bytes
    errors: bytes
    seconds: float
    resident_mb: float
    timed_out: bool

    def fault(self):
        """What is wrong with a run whatever its input was, None for nothing."""
        if self.timed_out:
            return "no end within the time limit"
        if self.status < 0:
            return f"ended by signal {-self.status}"
        if SANITIZER_REPORT.search(self.errors):
            return "sanitizer report"
        return None


class Folder:
    """A temporary folder that goes away at the end of a `with`."""

    def __init__(self, copy_of=None):
        self.path = tempfile.mkdtemp(prefix="vorc-test-")
        if copy_of is not None:
            shutil.copytree(copy_of, self.path, dirs_exist_ok=True)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        shutil.rmtree(self.path, ignore_errors=True)

    def write(self, name, content):
        data = content if isinstance(content, bytes) else content.encode()
        path = os.path.join(self.path, name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "wb") as file:
            file.write(data)


def run(command, folder, timeout=60, stdout=None, given=b"", env=None):
    """Runs a command in a folder with `given` as its input. `stdout` may be an open file to write to."""
    with tempfile.TemporaryFile() as captured, tempfile.TemporaryFile() as errors, tempfile.TemporaryFile() as stdin:
        stdin.write(given)
        stdin.seek(0)
        process = subprocess.Popen(command, cwd=folder, stdin=stdin if given else subprocess.DEVNULL,
                                   stdout=stdout if stdout is not None else captured,
                                   stderr=errors, start_new_session=True, env=env)
        expired = threading.Event()

        def expire():
            expired.set()
            process.kill()

        timer = threading.Timer(timeout, expire)
        timer.start()
        _, wait_status, usage = os.wait4(process.pid, 0)
        timer.cancel()
        process.returncode = os.waitstatus_to_exitcode(wait_status)
        captured.seek(0)
        errors.seek(0)
        return Result(process.returncode, captured.read(), errors.read(),
                      usage.ru_utime + usage.ru_stime, usage.ru_maxrss / 1024, expired.is_set())


def missing(*tools):
    """True, with a line for each, if some of these programs aren't there."""
    absent = [tool for tool in tools if shutil.which(tool) is None]
    for tool in absent:
        print(f"passed over: no {tool} here")
    return bool(absent)


def chromium(*words):
    """What a browser without a window prints."""
    with Folder() as profile:
        return subprocess.run(["chromium", "--headless=new", "--no-sandbox", "--disable-gpu", f"--user-data-dir={profile.path}", *words],
                              stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=120, check=False).stdout


def limit_file_size(size):
    """For Popen's preexec_fn: no file of the program grows beyond so many bytes, as on a full disk."""
    def apply():
        # The interpreter that starts the program ignores this signal; others don't.
        signal.signal(signal.SIGXFSZ, signal.SIG_DFL)
        resource.setrlimit(resource.RLIMIT_FSIZE, (size, size))
    return apply


def quoted(text):
    """A literal of a script."""
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"').replace("\n", "\\n") + '"'


def script_prints(place, vorc, folder, name, accepted, statuses=(0, 1), given=b""):
    """Whether the script NAME of a folder prints one of the accepted texts; a first line `// args: a b` holds its arguments."""
    with open(os.path.join(folder.path, name), encoding="utf-8") as file:
        first = file.readline()
    arguments = first.removeprefix("// args:").split() if first.startswith("// args:") else []
    result = run([vorc, "-morv", "-morvquiet", name, *arguments], folder.path, given=given)
    fault = result.fault() or (f"exit status {result.status}" if result.status not in statuses else None)
    if fault is None and result.output in accepted:
        return True
    print(f"FAIL {place}: {fault or 'output'}\n{result.errors.decode('utf-8', 'replace')[-1500:]}")
    show_difference(accepted[0], result.output)
    return False


outcomes = []


def check(name, actual, expected):
    """Counts one check; both values are shown when they differ."""
    outcomes.append(actual == expected)
    if actual != expected:
        print(f"FAIL {name}\n  expected: {expected!r}\n  actual:   {actual!r}")


def check_true(name, condition, shown=""):
    check(name, (bool(condition), "" if condition else shown), (True, ""))


def run_tests(functions):
    """Calls all functions whose name begins with test_; the answer is the exit status."""
    for name, test in sorted(functions.items()):
        if name.startswith("test_"):
            test()
    return close(outcomes)


def close(results):
    """Prints the closing line for a list of outcomes; the answer is the exit status."""
    passed = sum(results)
    print(f"{passed} passed, {len(results) - passed} failed")
    return 0 if passed and passed == len(results) else 1


def show_difference(expected, actual, lines=12):
    import difflib
    difference = difflib.unified_diff(expected.decode("utf-8", "replace").splitlines(),
                                      actual.decode("utf-8", "replace").splitlines(),
                                      "expected", "printed", lineterm="", n=1)
    for count, line in enumerate(difference):
        if count == lines:
            print("  ...")
            return
        print("  " + line)
