"""Runs all steps whose names match /etc/desktop-steps. Standard output gets one line for each: "ok", "FAILED" with the
reason, or "NOT RUN" with what this machine lacks."""

import importlib
import re
import subprocess
import sys
import traceback
from pathlib import Path

import steps

THEMES = ("prompt", "panel", "actions", "speech", "tray", "wayland")


def slug(name):
    return re.sub(r"[^a-z0-9]+", "-", name.lower()).strip("-")


def run(desktop, name, function):
    try:
        function(desktop)
    except steps.NotRun as reason:
        return f"NOT RUN {name} ({reason})"
    except Exception as reason:  # whatever a step meets, the next one has to run
        desktop.keep_evidence("failed-" + slug(name))
        traceback.print_exc()
        return f"FAILED  {name} ({reason})"
    finally:
        desktop.clear()
    return f"ok      {name}"


def run_theme(theme, pattern):
    module = importlib.import_module(theme)
    wanted = [(name, function) for name, function in steps.STEPS if pattern.search(name)]
    if not wanted:
        return
    try:
        with module.DESKTOP() as desktop:
            while wanted:
                print(run(desktop, *wanted[0]), flush=True)
                wanted = wanted[1:]
    except Exception as reason:  # a desktop that does not start
        traceback.print_exc()
        for name, _ in wanted:
            print(f"NOT RUN {name} ({reason})", flush=True)


def main():
    if len(sys.argv) > 1:
        pattern = re.compile(Path("/etc/desktop-steps").read_text(encoding="utf-8").strip() or ".")
        run_theme(sys.argv[1], pattern)
        return
    for theme in THEMES:
        # Each in a process of its own: Atspi stays with the first accessibility bus that it has seen.
        subprocess.run([sys.executable, __file__, theme], check=False)


main()
