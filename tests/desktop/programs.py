"""Programs of a session, and what every kind of desktop has."""

import os
import signal
import subprocess
import time
from pathlib import Path

import tree
from product import Product
from steps import expect, wait_for

RESULTS = Path("/results")
RUNTIME = Path(os.environ["XDG_RUNTIME_DIR"])
AGENT = "/usr/libexec/polkit-mate-authentication-agent-1"


def output_of(*command, **options):
    return subprocess.run(command, check=True, text=True, stdout=subprocess.PIPE, **options).stdout


class Program:
    """A program that runs until it is stopped."""

    def __init__(self, *command, environment, log="session"):
        with open(RESULTS / f"{log}.txt", "ab") as file:
            self._process = subprocess.Popen(command, env=environment, stdin=subprocess.DEVNULL, stdout=file,
                                             stderr=file, start_new_session=True)

    @property
    def pid(self):
        return self._process.pid

    def is_running(self):
        return self._process.poll() is None

    def stop(self, number=signal.SIGTERM):
        if self.is_running():
            self._process.send_signal(number)
        try:
            self._process.wait(5)
        except subprocess.TimeoutExpired:
            self._process.kill()
            self._process.wait()


class Desktop:
    """What the steps use, whatever the kind of display."""

    # Started by the bus for the display of that time.
    SERVICES = ("at-spi-dbus-bus", "xdg-desktop-portal", "xdg-desktop-portal-gtk")

    def __init__(self, environment):
        self.environment = {**os.environ, **environment, "LC_ALL": "C.UTF-8"}
        self._programs = []
        self.agent = None
        self.product = None

    def start_services(self):
        names = ("DISPLAY", "WAYLAND_DISPLAY", "XDG_SESSION_TYPE", "XDG_CURRENT_DESKTOP", "LC_ALL")
        known = [name for name in names if name in self.environment]
        unknown = [name for name in names if name not in self.environment]
        subprocess.run(["systemctl", "--user", "unset-environment", *unknown], check=True)
        subprocess.run(["dbus-update-activation-environment", "--systemd", *known], check=True, env=self.environment)
        self.setting("org.gnome.desktop.interface", "toolkit-accessibility", "true")
        self.look("light")
        # Not activated by whoever asks first: it has to end with this desktop.
        self.run("/usr/libexec/at-spi-bus-launcher", "--launch-immediately")
        wait_for("the accessibility bus", lambda: self._answers("org.a11y.Bus", "/org/a11y/bus"))
        self.start_agent()

    def _answers(self, name, path):
        return subprocess.run(["gdbus", "introspect", "--session", "--dest", name, "--object-path", path],
                              env=self.environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                              check=False).returncode == 0

    def start_agent(self):
        self.agent = self.run(AGENT)
        wait_for("the agent of the password prompt", lambda: tree.application(self.agent.pid))

    def run(self, *command, log="session"):
        program = Program(*command, environment=self.environment, log=log)
        self._programs.append(program)
        return program

    def setting(self, group, key, value):
        subprocess.run(["gsettings", "set", group, key, value], check=True, env=self.environment)

    def look(self, name):
        self.setting("org.gnome.desktop.interface", "color-scheme", f"prefer-{name}")

    def close(self):
        self.clear()
        for program in reversed(self._programs):
            program.stop()
        self._programs.clear()
        subprocess.run(["systemctl", "--user", "stop", *self.SERVICES], check=False, stderr=subprocess.DEVNULL)

    def __enter__(self):
        try:
            self.open()
        except BaseException:
            self.close()
            raise
        return self

    def __exit__(self, *_):
        self.close()

    # The product.
    def start_product(self, names=(), shows_table=True, **options):
        """A fresh start with these plugins in the folder of the system; with all of them in the table."""
        self.stop_product()
        Product.wipe()
        if names:
            Product.add_plugins(names, **options)
        self.restart_product()
        if shows_table:
            self.show_table()
        return self.product

    def restart_product(self):
        self.stop_product()
        self.product = Product(RESULTS / "product.txt", self.environment).start()
        self.await_window()
        return self.product

    def show_table(self):
        self.click(self.product.window.get(None, "All Plugins", acts=True))
        self.product.window.get("table", "Plugins")

    def focus_table(self):
        """By the keys alone, from the search on."""
        product = self.product
        product.window.get("text", "Search plugins").focus()
        for _ in range(12):
            time.sleep(0.3)
            if product.table_has_focus():
                return
            self.key("Tab")
        expect(False, "Tab does not reach the table")

    def stop_product(self):
        if self.product:
            self.product.stop()
            self.product = None

    def clear(self):
        """After each step. A prompt that is still open ends with its agent."""
        self.stop_product()
        if self.agent and (self.prompt() or not self.agent.is_running()):
            self.stop_agent()
            self.start_agent()
        self.look("light")

    def stop_agent(self):
        self.agent.stop(signal.SIGKILL)

    # The prompt.
    def prompt(self):
        """The window of the password prompt, or None."""
        application = tree.application(self.agent.pid)
        found = application.find("dialog") if application else None
        return found if found and found.has("showing") else None

    def await_prompt(self):
        prompt = wait_for("the password prompt", self.prompt)
        prompt.get("password text")
        return prompt

    def answer_prompt(self, password):
        self.focus_prompt()
        self.type(password)
        self.key("Return")

    def await_no_prompt(self):
        wait_for("the end of the password prompt", lambda: not self.prompt())

    # Pictures.
    def picture(self, name):
        """The screen in light and in dark."""
        for look in ("light", "dark"):
            self.look(look)
            time.sleep(0.3)
            self.save_picture(RESULTS / f"{name}-{look}.png")
        self.look("light")

    def keep_evidence(self, name):
        try:
            self.save_picture(RESULTS / f"{name}.png")
            lines = [line for application in tree.applications() for line in application.dump()]
            (RESULTS / f"{name}-tree.txt").write_text("\n".join(lines) + "\n", encoding="utf-8")
        except Exception as reason:  # evidence is not worth a second failure
            print(f"No evidence for {name}: {reason}", file=open(RESULTS / "errors.txt", "a", encoding="utf-8"))
