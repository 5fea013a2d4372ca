#!/usr/bin/env python3
"""Opens every window of the program as a screen reader does, and compares what it finds there.

    accessibility_test.py PROGRAM PHOTO VERSION

Runs in a display with a session bus (see with_accessibility.sh). Every control that takes the
keyboard, and every drop-down list, must be in the list of its window with its right name; lists
must have rows; values that change must be announced. A new window is one more row of WINDOWS.
"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time
from dataclasses import dataclass, field

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

PATIENCE = 60  # seconds that a busy machine may take for anything
PROGRAM, PHOTO, VERSION = sys.argv[1:]
MAIN = f"Veldara v{VERSION}"
LISTS = {"table", "list", "tree table", "tree"}
# Parts of a native list or field, which are read as a part of it.
PARTS = {"table cell", "table column header", "table row header", "list item", "menu item", "scroll pane"}
# Controls with a label of their own beside them, which a reader must know to belong to them.
LABELLED = {"Wide", "High", "Zoom", "Top Margin", "Left Edge", "Base Filename", "New Folder Name", "Cutting marks"}


@dataclass
class Window:
    """A window, how it is opened from the main window, and what can be worked in it."""

    title: str
    open: str = ""  # the keys that open it
    controls: list = field(default_factory=list)  # (role, name) in the order of the tree
    close: str = ""  # the keys that close it
    holds: str = ""  # the name of one of its controls, where titles are not enough
    says: str = ""  # the beginning of a text that must be there to be read
    inside: list = field(default_factory=list)  # windows that are opened from it
    then: list = field(default_factory=list)  # windows that come up when it has been closed so


MARGINS = [(role, f"{edge} Margin") for edge in ("Top", "Right", "Bottom", "Left")
           for role in ("combo box", "text")]
SAVE_CONTROLS = [
    ("combo box", "Drive"),
    ("tree table", "New Folder  Location"),
    ("text", "New Folder Name"),
    ("text", "Base Filename"),
    ("radio button", "Bitmap (.bmp)"),
    ("radio button", "Tiff (.tif)"),
    ("radio button", "JPEG (.jpg)"),
    ("push button", "Save Images Now"),
    ("push button", "Close"),
]
FOLDER_EXISTS_CONTROLS = [("push button", "Yes"), ("push button", "No"), ("push button", "Cancel")]
WINDOWS = [
    Window(MAIN, controls=[
        ("push button", "Desktop"),
        ("push button", "My Documents"),
        ("combo box", "Drive"),
        ("tree table", "Folders"),
        ("combo box", "File type"),
        ("table", "Image files"),
        ("push button", "Edit"),
        ("check box", "Adjust for clipped edges:"),
        ("combo box", "Edge calibration profile"),
        ("push button", "Edit"),
        ("combo box", "Wide"),
        ("combo box", "High"),
        ("check box", "Lock tiles high = tiles wide"),
        ("check box", "Rotate Tiles"),
        ("combo box", "Rotation"),
        ("check box", "Show Tiles"),
        ("push button", "Preview"),
        ("image", "lake.jpg, 4608 x 3072 pixels"),
        ("slider", "Zoom"),
        ("image", "Move the tiles over the photo"),
        ("push button", "Save Poster Tile Images"),
        ("push button", "Print or PDF..."),
        ("push button", "Exit"),
    ]),
    Window("Determine Tile Print Size", "alt+e", close="Escape", controls=[
        ("radio button", "Inches"),
        ("radio button", "Millimeters"),
        ("table", "Paper sizes"),
        ("text", "Width"),
        ("text", "Height"),
        *MARGINS,
        ("check box", "Lock Left=Right, Top=Bottom"),
        ("check box", "Borderless"),
        ("push button", "Set to borderless (no margins)"),
        ("push button", "Reset to default margins"),
        ("push button", "OK"),
        ("push button", "Apply"),
        ("push button", "Cancel"),
    ]),
    Window("Edge Calibration", "alt+i", close="Escape", controls=[
        ("push button", "Create Edge Calibration Test Image"),
        ("push button", "Print Test Image..."),
        ("table", "Edge Calibration Profiles"),
        ("push button", "New"),
        ("push button", "Rename"),
        ("push button", "Delete"),
        ("combo box", "Top Edge"),
        ("combo box", "Right Edge"),
        ("combo box", "Bottom Edge"),
        ("combo box", "Left Edge"),
        ("push button", "Close"),
    ], inside=[
        Window("New Configuration", "alt+n", close="Escape", says="Enter", controls=[
            ("text", "Enter name for new configuration"),
            ("push button", "OK"),
            ("push button", "Cancel"),
        ]),
    ]),
    Window("Edge Calibration Introduction", "alt+j", close="Return", says="This option compensates",
           controls=[("push button", "OK")]),
    # Where the desktop has no program that shows the system's facts, there is no button for it.
    Window("Veldara", "alt+h a", close="Escape", holds=f"Version {VERSION}", controls=[
        ("push button", "OK"),
    ]),
    Window("Save Image Tiles", "alt+s", close="alt+s", controls=SAVE_CONTROLS, then=[
        Window("Veldara", holds="OK", close="Escape", says="Images Saved Successfully", controls=[
            ("link", "~/Pictures/lake_poster_images"),
            ("push button", "OK"),
        ]),
    ]),
    Window("Save Image Tiles", "alt+s", close="alt+s", controls=SAVE_CONTROLS, then=[
        Window("Folder Exists", close="alt+n", says="The folder", controls=FOLDER_EXISTS_CONTROLS),
    ]),
    # So many tiles that the progress window stays for a while.
    Window("Save Image Tiles", "alt+w End alt+g End alt+s", close="alt+s", controls=SAVE_CONTROLS, then=[
        Window("Folder Exists", close="alt+y", controls=FOLDER_EXISTS_CONTROLS, then=[
            Window("Veldara", holds="Cancel", close="alt+c", says="Saving Images Now", controls=[
                ("push button", "Cancel"),
            ], then=[
                Window("Canceled", close="Return", says="Canceled by user", controls=[("push button", "OK")]),
            ]),
        ]),
    ]),
    Window("Choose by Poster Size", "alt+t p", close="Escape", controls=[
        ("radio button", "Width:"),
        ("text", "Width"),
        ("radio button", "Height:"),
        ("text", "Height"),
        ("radio button", "As large as it stays:"),
        ("combo box", "Quality"),
        ("radio button", "This paper (Photo 4\" x 6\")"),
        ("radio button", "Any paper"),
        ("check box", "May lie on their side"),
        ("table", "Choices"),
        ("push button", "OK"),
        ("push button", "Cancel"),
    ]),
    Window("Sheets for Printing", "ctrl+shift+s", close="Escape", controls=[
        ("push button", "Show the page before this one"),
        ("combo box", "Page"),
        ("push button", "Show the page after this one"),
        ("combo box", "Overlap (inches)"),
        ("text", "Overlap (inches)"),
        ("combo box", "Cutting marks"),
        ("text", "Only these sheets"),
        ("check box", "Label in the margin"),
        ("check box", "Page on printing and assembling"),
        ("push button", "Print..."),
        ("push button", "Save PDF..."),
        ("push button", "Close"),
    ]),
    Window("Poster Preview", "alt+p", controls=[("push button", "Close")]),
]


class Program:
    def __init__(self, program, photo):
        self.home = tempfile.mkdtemp()
        for folder in ("Pictures/Holidays", "Desktop", "Documents"):
            os.makedirs(f"{self.home}/{folder}")
        self.photo = shutil.copy(photo, f"{self.home}/Pictures/lake.jpg")
        environment = dict(os.environ, HOME=self.home, XDG_CONFIG_HOME=f"{self.home}/.config",
                           XDG_DATA_HOME=f"{self.home}/.local/share")
        self.process = subprocess.Popen([program, self.photo], env=environment)

    def end(self):
        self.process.kill()
        self.process.wait()
        shutil.rmtree(self.home)


def hear_for(seconds):
    """Lets events of the program come in; the interface has one thread."""
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        if not GLib.MainContext.default().iteration(False):
            time.sleep(0.01)


def comes_true(test, seconds=PATIENCE):
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        try:
            found = test()
        except GLib.Error:  # a widget has gone meanwhile
            found = None
        if found:
            return found
        hear_for(0.05)
    return None


def wait_for(what, test):
    found = comes_true(test)
    if found:
        return found
    raise SystemExit(f"accessibility: timed out waiting until {what}")


def children(node):
    for i in range(node.get_child_count()):
        child = node.get_child_at_index(i)
        if child is not None:
            yield child


def everything(node):
    yield node
    for child in children(node):
        yield from everything(child)


def has(node, state):
    return node.get_state_set().contains(state)


def windows_of(program):
    desktop = Atspi.get_desktop(0)
    for application in children(desktop):
        if application.get_process_id() == program.process.pid:
            yield from children(application)


def window(program, title, holds=""):
    for one in windows_of(program):
        if one.get_name() == title and has(one, Atspi.StateType.SHOWING):
            if not holds or any(node.get_name() == holds for node in everything(one)):
                return one
    return None


def press(program, title, keys):
    """Types keys into the window with that title, once it has the keyboard."""
    wait_for(f'"{title}" has the keyboard',
             lambda: (w := window(program, title)) and has(w, Atspi.StateType.ACTIVE))
    subprocess.run(["xdotool", "key", "--delay", "60", *keys.split()], check=True)


def relation_names(node, kind):
    for relation in node.get_relation_set():
        if relation.get_relation_type() == kind:
            return [relation.get_target(i).get_name() for i in range(relation.get_n_targets())]
    return []


def role_of(node):
    """Newer versions of the library call a push button a button."""
    role = node.get_role_name()
    return "push button" if role == "button" else role


def controls_of(root):
    """What can be worked in a window, without the parts of lists and fields."""
    for node in everything(root):
        role = role_of(node)
        if not has(node, Atspi.StateType.SHOWING) or role in PARTS:
            continue
        if has(node, Atspi.StateType.FOCUSABLE) or role == "combo box":
            yield node


def rows_of(node):
    return [n.get_name() for n in everything(node) if n.get_role_name() == "table cell" and n.get_name()]


def check(program, expected):
    """The faults of a window that is up."""
    root = wait_for(f'the window "{expected.title}" is up', lambda: window(program, expected.title, expected.holds))
    hear_for(0.3)
    faults = []
    found = []
    for node in controls_of(root):
        role = role_of(node)
        name = (node.get_name() or "").replace(program.home, "~")
        found.append((role, name))
        if not name:
            faults.append(f"a {role} without a name ({node.get_description()})")
        labels = relation_names(node, Atspi.RelationType.LABELLED_BY)
        if (labels or name in LABELLED) and [text.rstrip(":") for text in labels] != [name]:
            faults.append(f'the {role} "{name}" has the labels {labels}')
        if role in LISTS and not comes_true(lambda list=node: rows_of(list)):
            faults.append(f'the list "{name}" has no rows')
    if os.environ.get("VELDARA_LIST_CONTROLS"):
        for one in found:
            print(f"        {one!r},")
    elif found != expected.controls:
        faults.append(f"found {found}")
        faults.append(f"      expected {expected.controls}")
    texts = [" ".join(node.get_name().split()) for node in everything(root)]  # without line breaks
    if expected.says and not any(text.startswith(expected.says) for text in texts):
        faults.append(f'there is no text "{expected.says}..."')
    return [f"{expected.title}: {fault}" for fault in faults]


def visit(program, expected, opener=MAIN):
    if expected.open:
        press(program, opener, expected.open)
    faults = check(program, expected)
    for inner in expected.inside:
        faults += visit(program, inner, expected.title)
    if expected.close:
        press(program, expected.title, expected.close)
    for later in expected.then:
        faults += visit(program, later)
    return faults


class Listener:
    """Collects what is announced, and labels that change."""

    def __init__(self):
        self.heard = []
        self.listener = Atspi.EventListener.new(self.hear)
        for kind in ("object:announcement", "object:notification",
                     "object:property-change:accessible-name"):
            self.listener.register(kind)

    def hear(self, event):
        if event.type.startswith("object:property-change"):
            self.heard.append(("changed", event.any_data))
        else:
            self.heard.append(("announced", event.any_data))


def check_announcements(program, listener):
    faults = []
    for keys, expected in (("alt+w Down", "Final Size: 18 x 8 inches"), ("alt+z Right", "Zoom: (1%)")):
        press(program, MAIN, keys)
        wait_for(f'"{expected}" is announced', lambda: ("announced", expected) in listener.heard)
    return faults


def wait_for_photo(program):
    root = wait_for("the main window is up", lambda: window(program, MAIN))
    wait_for("the photo is loaded", lambda: [n for n in everything(root) if n.get_name().startswith("lake.jpg, ")])


def main():
    listener = Listener()
    program = Program(PROGRAM, PHOTO)
    try:
        faults = []
        wait_for_photo(program)
        wait_for("the photo is announced",
                 lambda: ("announced", "lake.jpg, 4608 x 3072 pixels") in listener.heard)
        check_announcements(program, listener)
        for one in WINDOWS:
            print(one.title)
            faults += visit(program, one)
    finally:
        program.end()
    for fault in faults:
        print(fault, file=sys.stderr)
    sys.exit(1 if faults else 0)


main()
