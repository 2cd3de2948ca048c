"""The installed product: its plugins on disk, its catalogue and its process."""

import shutil
import sqlite3
import subprocess
import time
from pathlib import Path

import tree
from steps import Failed, expect, expect_equal, wait_for

HOME = Path.home()
PASSWORD = "open sesame"
PLUGINS = Path("/Library/Audio/Plug-Ins")
DATA = HOME / ".local/share/Orvanlite"
SETTINGS = HOME / ".config/Orvanlite"
FOLDERS = {"VST3": "VST3", "CLAP": "CLAP", "Audio Units": "Components", "VST": "VST"}


def as_root(command):
    subprocess.run(["sudo", "-S", "-p", "", "sh", "-ec", command], input=PASSWORD + "\n", text=True, check=True,
                   stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)


def enabled_path(name, kind):
    return PLUGINS / FOLDERS[kind] / f"{name}.{'vst3' if kind == 'VST3' else 'clap' if kind == 'CLAP' else kind}"


def disabled_path(name, kind):
    return PLUGINS / "Disabled" / kind / enabled_path(name, kind).name


def manifest(maker, identifier):
    return (f'<?xml version="1.0"?><plist version="1.0"><dict><key>CFBundleIdentifier</key><string>{identifier}'
            f'</string><key>CFBundleShortVersionString</key><string>1.2</string><key>NSHumanReadableCopyright</key>'
            f'<string>Copyright {maker}</string></dict></plist>')


class Product:
    """One start of the application. Its output goes to a file of the results."""

    def __init__(self, log, environment):
        self._log = log
        self._environment = environment
        self._process = None
        self.window = None

    @staticmethod
    def wipe():
        """As before the first start, without plugins."""
        as_root(f"umount '{PLUGINS}/Disabled' 2>/dev/null || true; rm -rf '{PLUGINS}'/*")
        for folder in (DATA, SETTINGS, HOME / "Library"):
            shutil.rmtree(folder, ignore_errors=True)
        SETTINGS.mkdir(parents=True)
        (SETTINGS / "defaults.ini").write_text("[General]\nonboardingComplete=true\n", encoding="utf-8")

    @staticmethod
    def add_plugins(names, kind="VST3", maker="Kestrelmoor", payload=0):
        """Bundles in the folder of the system. payload: size of a file in each, in bytes."""
        lines = []
        for number, name in enumerate(names):
            contents = enabled_path(name, kind) / "Contents"
            text = manifest(maker, f"com.{maker.lower()}.plugin{number}")
            lines.append(f"mkdir -p '{contents}'; printf %s '{text}' >'{contents}/Info.plist'")
            if payload:
                lines.append(f"head -c {payload} /dev/urandom >'{contents}/payload'")
        as_root("\n".join(lines))

    def start(self):
        with open(self._log, "ab") as log:
            self._process = subprocess.Popen(["plugin-manager"], env=self._environment, stdout=log, stderr=log,
                                             stdin=subprocess.DEVNULL)
        application = wait_for("the product in the accessibility tree",
                               lambda: tree.application(self._process.pid), 30)
        self.application = application
        self.window = application.get("frame", seconds=30)
        wait_for("the end of the first scan", lambda: (DATA / "plugins.db").exists() and self.row_count() is not None
                 and not self.window.find(name="Scanning..."), 30)
        return self

    def stop(self):
        if not self._process:
            return
        self._process.terminate()
        try:
            self._process.wait(10)
        except subprocess.TimeoutExpired:
            self._process.kill()
            self._process.wait()
        self._process = None

    @property
    def pid(self):
        return self._process.pid

    def is_running(self):
        return self._process is not None and self._process.poll() is None

    def output(self):
        return Path(self._log).read_text(encoding="utf-8", errors="replace")

    @staticmethod
    def rows(query):
        connection = sqlite3.connect(f"file:{DATA}/plugins.db?mode=ro", uri=True, timeout=5)
        try:
            return connection.execute(query).fetchall()
        finally:
            connection.close()

    def row_count(self):
        try:
            return self.rows("SELECT count(*) FROM plugins")[0][0]
        except sqlite3.Error:
            return None

    def states(self):
        """Name and state of all rows of the catalogue."""
        return dict(self.rows("SELECT name, isEnabled FROM plugins"))

    # Files, catalogue and what a reader is told have to agree.
    def expect_state(self, names, enabled, kind="VST3"):
        for name in names:
            here, there = enabled_path(name, kind), disabled_path(name, kind)
            right, wrong = (here, there) if enabled else (there, here)
            wait_for(f"{right}, and nothing at {wrong}", lambda: right.exists() and not wrong.exists())
        paths = [str(enabled_path(name, kind) if enabled else disabled_path(name, kind)) for name in names]
        wanted = {name: (path, int(enabled)) for name, path in zip(names, paths)}
        self._await("rows of the catalogue", wanted,
                    lambda: {name: rest for name, *rest in self.rows("SELECT name, currentPath, isEnabled FROM plugins")})
        self._await("switches for readers", {name: ("Enabled" if enabled else "Disabled", enabled) for name in names},
                    self.switches)

    @staticmethod
    def _await(what, wanted, question):
        def differences():
            found = question()
            return {key: (found.get(key), value) for key, value in wanted.items() if tuple(found.get(key, ())) != value}

        try:
            wait_for(what, lambda: not differences())
        except Failed:
            expect_equal(differences(), {}, f"{what}, found and wanted")

    def table(self):
        return self.window.get("table", "Plugins")

    def table_has_focus(self):
        table = self.table()
        return table.has("focused") or any(cell.has("focused") for cell in table.walk())

    def switches(self):
        """What a reader is told of each switch, by the plugin's name."""
        found = {}
        for cell in self.table().children:
            if cell.role == "table cell" and cell.description.startswith("Switch for "):
                found[cell.description[len("Switch for "):]] = (cell.name, cell.has("checked"))
        return found

    def switch(self, name):
        """The cell with the switch of a plugin, which has to be in view."""
        return wait_for(f"the row of {name}", lambda: self.table().find("table cell", description=f"Switch for {name}"))

    def cell(self, name):
        return self.table().get("table cell", name)

    def unchanged(self, action, seconds=1.5):
        """Does something that must not change any plugin, and gives a wrong change the time to happen."""
        before = sorted(PLUGINS.rglob("*")), self.states()
        action()
        time.sleep(seconds)
        after = sorted(PLUGINS.rglob("*")), self.states()
        expect(before == after, "plugins have changed")
