"""Runs the tool, curl and python3-jira in turn with files of growing size, and looks at each process from outside."""

import os
import platform
import re
import statistics
import subprocess
import time

KIB = 1024
MIB = 1024 * KIB
GIB = 1024 * MIB
SIZES = [KIB, 32 * KIB, MIB, 10 * MIB, 100 * MIB, GIB, 4 * GIB]
LEAST_RUNS = 3
MOST_RUNS = 21

# What a user of python3-jira writes, with the file as a stream in both directions.
PEER_PROGRAM = """
import sys
from jira import JIRA
server, cookie, direction, what, place = sys.argv[1:]
name, value = cookie.split("=", 1)
jira = JIRA({"server": server, "cookies": {name: value}, "check_update": False}, get_server_info=False)
if direction == "upload":
    with open(place, "rb") as file:
        jira.add_attachment("SINK-1", file, filename="plan.tessaloom")
else:
    found = [one for one in jira.issue("SOURCE-1").fields.attachment if one.filename == what]
    with open(place, "wb") as file:
        for chunk in found[0].iter_content(chunk_size=256 * 1024):
            file.write(chunk)
"""


def size_name(size):
    for unit, name in ((GIB, "GiB"), (MIB, "MiB"), (KIB, "KiB")):
        if size >= unit:
            return f"{size // unit} {name}"
    return f"{size} bytes"


def file_name(size):
    return f"{size}.tessaloom"


class Desk:
    """A stand-in server with a file of each size, a session there, and a folder."""

    def __init__(self, build, folder, sizes):
        self.build = build
        self.folder = folder
        self.environment = dict(os.environ, HOME=folder, XDG_CONFIG_HOME=folder, XDG_DATA_HOME=folder, TMPDIR=folder)
        arguments = [f"{build}/standin/tljira-standin", "--port", "0", "--user", "demo:demo", "--issue", "SINK-1", "--issue", "SOURCE-1", "--sink"]
        for size in sizes:
            arguments += ["--synthetic", f"SOURCE-1:{file_name(size)}:{size}"]
            with open(self.document(size), "wb") as file:
                file.truncate(size)
        self.server = subprocess.Popen(arguments, stdout=subprocess.PIPE, text=True)
        self.address = "http://127.0.0.1:" + re.search(r":(\d+)", self.server.stdout.readline()).group(1)
        answer = subprocess.run(["curl", "-sSf", "-H", "Content-Type: application/json", "-d", '{"username":"demo","password":"demo"}',
                                 f"{self.address}/rest/auth/1/session"], capture_output=True, text=True, check=True).stdout
        self.cookie = "=".join(re.search(r'"name":\s*"(.*?)".*"value":\s*"(.*?)"|$', answer).groups())
        subprocess.run([f"{build}/cli/tljira", "login", self.address, "demo", "--password-stdin"], input="demo\n", text=True,
                       check=True, env=self.environment, capture_output=True)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.server.kill()
        self.server.wait()

    def document(self, size):
        return os.path.join(self.folder, file_name(size))

    def commands(self, direction, size):
        """What each of them runs, and the file that it leaves."""
        place = os.path.join(self.folder, "fetched")
        name = file_name(size)
        tool = [f"{self.build}/cli/tljira"]
        # As the issue tells it.
        number = self.attachment_numbers().get(name, "")
        peer = ["/usr/bin/python3", "-c", PEER_PROGRAM, self.address, self.cookie, direction, name]
        if direction == "upload":
            return {
                "tljira": tool + ["upload", "SINK-1", self.document(size)],
                "curl": ["curl", "-sSf", "-b", self.cookie, "-H", "X-Atlassian-Token: nocheck", "-F", f"file=@{self.document(size)}",
                         f"{self.address}/rest/api/2/issue/SINK-1/attachments"],
                "python3-jira": peer + [self.document(size)],
            }, place
        return {
            "tljira": tool + ["download", "SOURCE-1", number, "--to", place],
            "curl": ["curl", "-sSf", "-b", self.cookie, "-o", place, f"{self.address}/secure/attachment/{number}/{name}"],
            "python3-jira": peer + [place],
        }, place

    def attachment_numbers(self):
        lines = subprocess.run([f"{self.build}/cli/tljira", "attachments", "SOURCE-1"], env=self.environment, capture_output=True, text=True,
                               check=True).stdout.splitlines()
        return {line.split()[-1]: line.split()[0] for line in lines}

    def run(self, command, place):
        """Seconds and peak bytes. A run that fails would look fast: it ends everything."""
        output = subprocess.run([f"{self.build}/bench/measure", *command], env=self.environment, stdout=subprocess.PIPE, text=True, check=True).stdout
        if os.path.exists(place):
            os.remove(place)
        seconds, peak = output.split()
        return float(seconds), int(peak)


def measure(desk, direction, size, budget):
    """The figures of each program, from runs in turn, so that a change of the machine's speed meets all of them."""
    commands, place = desk.commands(direction, size)
    figures = {name: {"seconds": [], "peak": []} for name in commands}
    for name, command in commands.items():
        desk.run(command, place)
    end = time.monotonic() + budget
    runs = 0
    while runs < LEAST_RUNS or (runs < MOST_RUNS and time.monotonic() < end):
        for name, command in commands.items():
            seconds, peak = desk.run(command, place)
            figures[name]["seconds"].append(seconds)
            figures[name]["peak"].append(peak)
        runs += 1
    rows = []
    for name, values in figures.items():
        ratios = [mine / curls for mine, curls in zip(values["seconds"], figures["curl"]["seconds"])]
        rows.append({"direction": direction, "bytes": size, "program": name, "runs": runs,
                     "seconds": round(statistics.median(values["seconds"]), 6), "of_curl": round(statistics.median(ratios), 4),
                     "peak_bytes": int(statistics.median(values["peak"]))})
    return rows


def first_line(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout.splitlines()[0].strip()


def circumstances(build):
    """One line about the machine and one about the programs."""
    with open("/proc/cpuinfo", encoding="utf-8") as file:
        model = re.search(r"model name\s*:\s*(.*)", file.read())
    with open("/etc/os-release", encoding="utf-8") as file:
        system = re.search(r'PRETTY_NAME="?([^"\n]*)', file.read()).group(1)
    cores = os.cpu_count()
    machine = f"{model.group(1).strip() if model else platform.machine()}, {cores} core{'' if cores == 1 else 's'}, {system}"
    curl = " ".join(first_line("curl", "--version").split()[:2])
    peer = first_line("/usr/bin/python3", "-c", "import jira; print(jira.__version__)")
    return machine, f"{first_line(f'{build}/cli/tljira', '--version')}, {curl}, python3-jira {peer}"
