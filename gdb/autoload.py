# gdb runs this file when it loads one of the libraries: it is installed once for each, named after the library, below
# share/gdb/auto-load. The printers stand beside that folder and are found from here, wherever the tree was moved to.
import os
import sys

import gdb


def _printers_folder():
    folder = os.path.dirname(os.path.abspath(__file__))
    while os.path.basename(folder) != "auto-load" and folder != os.path.dirname(folder):
        folder = os.path.dirname(folder)
    return os.path.join(os.path.dirname(os.path.dirname(folder)), "qvpreslayer", "gdb")


if _printers_folder() not in sys.path:
    sys.path.insert(0, _printers_folder())

import qvpreslayer_printers

qvpreslayer_printers.register(gdb.current_objfile())
