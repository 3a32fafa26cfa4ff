"""The windows of the desktop program as a screen reader knows them, through AT-SPI: for the scripts beside this one."""
import os
import shutil
import subprocess
import sys
import time
import warnings

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402 (the version comes first)

PATIENCE = 60  # seconds, for a machine that is busy

PLACES = ("InBuiltinProperty InCustomProperties InFooter InHandoutMaster InHeader InHyperlinkAddresses InLinks InNotes "
          "InNotesMaster InShapesAndTextboxes InSlideMasterPerPresentation InSlideMasterPerSlide InSlides InTitleMaster")
LIST_HEADS = ",".join(["Find What", "Replace With", *PLACES.split(), "MatchCase", "MatchWholeWord"])

warnings.simplefilter("ignore", DeprecationWarning)  # the binding calls its own wrappers deprecated


def can_run():
    return all(shutil.which(tool) for tool in ("dbus-run-session", "xvfb-run"))


def start_over(screen):
    """Starts the script again on a bus and a screen of its own, unless it is there already."""
    if os.environ.get("TESSARINE_SCREEN") == screen:
        return
    os.environ["TESSARINE_SCREEN"] = screen
    os.execvp("dbus-run-session", ["dbus-run-session", "--", "xvfb-run", "--auto-servernum", "--server-args",
                                   f"-screen 0 {screen}x24", sys.executable, *sys.argv])


def wait_for(what, look):
    """What `look` finds, which may take a moment."""
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        try:
            found = look()
        except (GLib.Error, AttributeError):  # a window that has just gone, or is yet to come
            found = None
        if found:
            return found
        time.sleep(0.05)
    raise SystemExit(f"no {what}")


def children(node):
    return [child for child in (node.get_child_at_index(i) for i in range(node.get_child_count())) if child]


def is_shown(node):
    states = node.get_state_set()
    return states.contains(Atspi.StateType.SHOWING) and states.contains(Atspi.StateType.VISIBLE)


def in_sight(node):
    for child in children(node):
        if is_shown(child):
            yield child
            yield from in_sight(child)


def find(node, role, name):
    return next((n for n in in_sight(node) if n.get_role_name() == role and n.get_name() == name), None)


def act(node):
    """What a click does."""
    names = [node.get_action_name(i) for i in range(node.get_n_actions())]
    at = next((i for i, name in enumerate(names) if name in ("Press", "Toggle", "ShowMenu")), None)
    if at is None:
        raise SystemExit(f"{node.get_role_name()} '{node.get_name()}' has only the actions {names}")
    try:
        node.do_action(at)
    except GLib.Error:
        pass  # a dialog answers only when it ends; what it has done is looked at by whoever calls this


class Texts:
    """The texts of a language file, as controls show them."""

    def __init__(self, program, language):
        self.texts = {}
        section = ""
        path = os.path.join(os.path.dirname(program), "Languages", language + ".lng")
        with open(path, encoding="utf-8-sig") as file:
            for line in file.read().splitlines():
                if line.startswith("["):
                    section = line.strip("[]")
                elif "=" in line:
                    key, text = line.split("=", 1)
                    self.texts[section, key] = text

    def __call__(self, key, section="frmMain"):
        return self.texts[section, key].replace("&", "").strip()


class Program:
    """The program, started in a home of its own in `folder`. It speaks English at first."""

    def __init__(self, program, folder, **environment):
        self.text = Texts(program, "English")
        self.process = subprocess.Popen([program], env={
            **os.environ, "HOME": folder, "XDG_CONFIG_HOME": folder, "XDG_DATA_HOME": folder, "LC_ALL": "C.UTF-8",
            "QT_QPA_PLATFORM": "xcb", "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", **environment})
        Atspi.set_timeout(2000, 2000)  # milliseconds
        desktop = Atspi.get_desktop(0)
        self.application = wait_for("program", lambda: next(
            (a for a in children(desktop) if a.get_process_id() == self.process.pid), None))
        self.application.set_cache_mask(Atspi.Cache.NONE)  # windows change while they are walked
        self.main = wait_for("main window", lambda: self.window("Tessarine"))

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.kill()
        self.process.wait()

    def window(self, title):
        return next((w for w in children(self.application) if title in w.get_name() and is_shown(w)), None)

    def window_with(self, role, *names):
        """The window that shows a control by one of these names."""
        return next((w for w in children(self.application)
                     if is_shown(w) and any(find(w, role, name) for name in names)), None)

    def menu_item(self, menu, item):
        """An item of a menu, by keys, which may be asked for while the menu is closed."""
        bar = next(n for n in in_sight(self.main) if n.get_role_name() == "menu bar")
        stack = children(next(n for n in children(bar) if n.get_name() == self.text(menu + ".caption")))
        while stack:
            node = stack.pop()
            if node.get_name() == self.text(item + ".caption"):
                return node
            stack += children(node)
        raise SystemExit(f"no item {item}")


def choose_tab(top, name):
    act(wait_for(f"tab {name}", lambda: find(top, "page tab", name)))


def type_into(top, name, text):
    wait_for(f"box {name}", lambda: find(top, "text", name)).set_text_contents(text)
