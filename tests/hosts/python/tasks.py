"""A host in Python with an interface of its own. It chooses options, does the jobs without windows, and says what came of
them.

    tasks.py FOLDER ROUTE DOCUMENT FETCHED
"""

import os
import shutil
import sys

from PyQt6.QtCore import QDir, QPluginLoader, QTimer
from PyQt6.QtWidgets import QApplication


class Host:
    def __init__(self, jira, document, fetched):
        self.jira = jira
        self.document = document
        self.fetched = fetched
        self.then = {}
        self.progress = {}
        self.lines = []
        jira.ended.connect(self.on_ended)
        jira.progress.connect(self.on_progress)
        jira.logged.connect(self.lines.append)

    def on_progress(self, job, count, of):
        self.progress[job] = (count, of)

    def on_ended(self, job, result):
        self.then.pop(job)(job, result)

    def begin(self):
        self.then[self.jira.signIn("http://jira.example.test", "anna", "secret")] = self.on_signed_in

    def on_signed_in(self, job, result):
        print("signed in:", result["outcome"])
        print("too late:", self.jira.setOptions({}))
        self.then[self.jira.askWhoIsSignedIn()] = self.on_user

    def on_user(self, job, result):
        print("who:", result["userName"], result["displayName"])
        self.then[self.jira.attachFileTo("ABC-1", "plan.tessaloom", self.document)] = self.on_attached

    def on_attached(self, job, result):
        count, of = self.progress[job]
        print("attached:", result["outcome"], result["attachmentName"], result["size"], count == of > result["size"])
        cancelled = self.jira.attachBytesTo("ABC-1", "another.tessaloom", b"wool")
        self.then[cancelled] = self.on_cancelled
        print("cancel:", self.jira.cancel(cancelled), self.jira.cancel(cancelled), self.jira.cancel(job))

    def on_cancelled(self, job, result):
        print("cancelled:", result["outcome"])
        self.then[self.jira.listDocuments("NO-1")] = self.on_failed

    def on_failed(self, job, result):
        print("failed:", result["outcome"], result["errorCode"], result["documents"])
        self.then[self.jira.listDocuments("ABC-1")] = self.on_listed

    def on_listed(self, job, result):
        for document in result["documents"]:
            print("listed:", document["attachmentName"], document["size"], document["date"].isValid())
        first = result["documents"][0]["attachmentId"]
        self.then[self.jira.fetchAttachment("ABC-1", first)] = self.on_fetched

    def on_fetched(self, job, result):
        print("fetched:", result["attachmentName"], self.progress[job] == (result["size"], result["size"]))
        shutil.move(result["path"], self.fetched)
        os.rmdir(os.path.dirname(result["path"]))
        log = "\n".join(self.lines)
        print("log:", "username = anna" in log, "password = ***" in log, "secret" in log)
        QApplication.exit()


def main():
    application = QApplication(sys.argv)
    application.setApplicationName("plugin_host")
    QTimer.singleShot(110000, os.abort)  # A user who gives up.
    folder, route, document, fetched = sys.argv[1:5]

    jira = QPluginLoader(QDir(folder).filePath("TLJiraControllerPlugin")).instance()
    print("refused:", jira.setOptions({"log": "off", "colour": "blue"}))
    print("refused:", jira.setOptions({"address": "somewhere"}))
    print("chosen:", jira.setOptions({
        "log": "signal", "routes": [route], "userAgent": "Weaver/2.1", "documents": ["odt", {"extension": "tessaloom"}],
    }) == "")
    host = Host(jira, document, fetched)
    QTimer.singleShot(0, host.begin)
    return application.exec()


sys.exit(main())
