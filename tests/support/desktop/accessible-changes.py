"""Says each name that changes in a program's accessible objects, as assistive tools hear of it."""

import sys

import pyatspi


def tell(event):
    if event.host_application is not None and event.host_application.name == sys.argv[1]:
        print("changed to '%s'" % event.any_data, flush=True)


pyatspi.Registry.registerEventListener(tell, "object:property-change:accessible-name")
print("listening", flush=True)
pyatspi.Registry.start()
