"""60 plugins that are moved with one password, and a stop in the middle of it."""

import subprocess

from product import PASSWORD, PLUGINS, as_root
from programs import RUNTIME
from steps import wait_for

NAMES = [f"Plugin {number:02}" for number in range(1, 61)]
LABEL = "Disabling 60 plugins…"
HELD = RUNTIME / "held"


def start(desktop):
    """The product with all of them. Those that are disabled go to another disk, so that moving takes its time."""
    product = desktop.start_product(NAMES, payload=1_000_000)
    as_root(f"mkdir -p '{PLUGINS}/Disabled'; mount -t tmpfs disabled '{PLUGINS}/Disabled'")
    return product


class HeldRun:
    """Answers the prompt, and holds the runner between the first third and the end while the body runs."""

    def __init__(self, desktop):
        self._desktop = desktop
        self._holder = None

    def __enter__(self):
        HELD.unlink(missing_ok=True)
        self._holder = subprocess.Popen(["sudo", "-S", "-p", "", "python3", "/steps/hold.py", "20", str(HELD)],
                                        stdin=subprocess.PIPE, text=True)
        self._holder.stdin.write(PASSWORD + "\n")
        self._holder.stdin.close()
        try:
            self._desktop.answer_prompt(PASSWORD)
            wait_for("the middle of the run", HELD.exists, 60)
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        as_root(f"rm '{HELD}'" if HELD.exists() else f"kill {self._holder.pid}")
        self._holder.wait(10)


def await_middle(product):
    """Until the progress that a reader is told is that of the files."""
    bar = product.application.get("progress bar")
    wait_for(f"progress between a third and the end, now {bar.value} of {bar.highest}",
             lambda: 0.3 < (bar.value or 0) / (bar.highest or 100) < 1, 5)
