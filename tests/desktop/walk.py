"""Runs all steps whose names match /etc/desktop-steps. Standard output gets one line for each: "ok", "FAILED" with the
reason, or "NOT RUN" with what this machine lacks."""

import importlib
import re
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
    steps.STEPS.clear()
    module = importlib.import_module(theme)
    wanted = [(name, function) for name, function in steps.STEPS if pattern.search(name)]
    if not wanted:
        return
    try:
        with module.DESKTOP() as desktop:
            for name, function in wanted:
                print(run(desktop, name, function), flush=True)
                wanted = wanted[1:]
    except Exception as reason:  # a desktop that does not start
        traceback.print_exc()
        for name, _ in wanted:
            print(f"NOT RUN {name} ({reason})")


def main():
    pattern = re.compile(Path("/etc/desktop-steps").read_text(encoding="utf-8").strip() or ".")
    for theme in THEMES:
        run_theme(theme, pattern)


main()
