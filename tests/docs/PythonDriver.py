"""Runs the host in Python of the documents, and plays its user, who attaches a document and fetches it:

    PythonDriver.py HOST
"""

import os
import runpy
import sys

from PyQt6.QtCore import QTimer
from PyQt6.QtWidgets import QApplication, QMainWindow, QPushButton

sys.path.insert(0, os.path.join(os.environ["PROJECT_FOLDER"], "tests/hosts/python"))
from user_events import User

wait_for_events = QApplication.exec


def exec_with_user(application):
    host = next(window for window in QApplication.topLevelWidgets() if isinstance(window, QMainWindow))
    host.jira.setRoutes([os.environ["ROUTE"]])
    ends = []
    host.jira.ended.connect(lambda job, result: ends.append(job))
    button = {button.text(): button for button in host.findChildren(QPushButton)}
    user = User([
        lambda user: user.click(button["Attach…"]),
        lambda user: user.log_in("http://jira.example.com", "anna", "correct horse"),
        lambda user: user.enter_key("taskTextField", "uploadFileButton", "DEMO-1"),
        lambda user: len(ends) == 1,
        lambda user: user.click(button["Fetch…"]),
        lambda user: user.enter_key("issueKeyTextField", "getAttachButton", "DEMO-1"),
        lambda user: user.click(user.seen(QPushButton, "downloadButton")),
        lambda user: len(ends) == 2 and (application.exit() or True),
    ])
    QTimer.singleShot(110000, os.abort)  # A user who gives up.
    return wait_for_events()


QApplication.exec = exec_with_user
runpy.run_path(sys.argv[1])
