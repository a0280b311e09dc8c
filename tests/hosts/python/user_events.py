"""What the user of a host does in the framework's windows. The host knows nothing of these but what can be seen."""

from PyQt6.QtCore import Qt, QTimer
from PyQt6.QtTest import QTest
from PyQt6.QtWidgets import QApplication, QLineEdit, QPushButton


class User:
    """Does the steps in their order, with mouse and keyboard, each as soon as it can be done."""

    def __init__(self, steps):
        self.steps = steps
        self.timer = QTimer()
        self.timer.timeout.connect(self.go_on)
        self.timer.start(5)

    def go_on(self):
        if self.steps and self.steps[0](self):
            del self.steps[0]

    @staticmethod
    def seen(kind, name):
        for window in QApplication.topLevelWidgets():
            for view in window.findChildren(kind, name):
                if view.isVisible() and view.isEnabled():
                    return view
        return None

    @staticmethod
    def click(button):
        if button:
            QTest.mouseClick(button, Qt.MouseButton.LeftButton)
        return button is not None

    def type(self, name, text):
        field = self.seen(QLineEdit, name)
        QTest.mouseClick(field, Qt.MouseButton.LeftButton)
        QTest.keyClick(field, Qt.Key.Key_A, Qt.KeyboardModifier.ControlModifier)
        QTest.keyClicks(field, text)

    def log_in(self, address, name, password):
        button = self.seen(QPushButton, "loginButton")
        if not button:
            return False
        self.type("hostTextField", address)
        self.type("emailTextField", name)
        self.type("passwordTextField", password)
        return self.click(button)

    def enter_key(self, field, button, key):
        if not self.seen(QLineEdit, field) or not self.seen(QPushButton, button):
            return False
        self.type(field, key)
        return self.click(self.seen(QPushButton, button))
