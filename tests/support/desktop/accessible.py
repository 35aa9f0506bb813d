"""The accessible objects of a program, one a line with its actions, indented by depth; with a name after the
program's, does the first action of the object of that name instead."""

import sys
import time

import pyatspi

DEADLINE = 30


def application(name):
    end = time.monotonic() + DEADLINE
    while time.monotonic() < end:
        for one in pyatspi.Registry.getDesktop(0):
            if one is not None and one.name == name:
                return one
        time.sleep(0.05)
    sys.exit("no accessible program " + name)


def actions(one):
    try:
        interface = one.queryAction()
    except NotImplementedError:
        return []
    return [interface.getName(i) for i in range(interface.nActions)]


def is_showing(one):
    return one.getState().contains(pyatspi.STATE_VISIBLE)


def show(one, depth):
    if one is None or not is_showing(one):
        return
    state = "" if one.getState().contains(pyatspi.STATE_SENSITIVE) else "disabled"
    print("  " * depth + one.getRoleName() + " '" + one.name + "' " + (state or ",".join(actions(one))))
    for child in one:
        show(child, depth + 1)


def find(one, name):
    if one is None:
        return None
    is_application = one.getRole() == pyatspi.ROLE_APPLICATION
    if not is_application and not is_showing(one):
        return None
    if one.name == name and actions(one):
        return one
    for child in one:
        found = find(child, name)
        if found is not None:
            return found
    return None


def act(root, name):
    end = time.monotonic() + DEADLINE
    while time.monotonic() < end:
        found = find(root, name)
        if found is not None:
            found.queryAction().doAction(0)
            return
        time.sleep(0.05)
    sys.exit("no accessible object " + name)


program = application(sys.argv[1])
if len(sys.argv) > 2:
    act(program, sys.argv[2])
else:
    for window in program:
        show(window, 0)
