#!/usr/bin/env python3
"""Labels on many machines: GNU parallel hands the rows of one batch to hosts over ssh.

Two ssh servers of the test's own, on loopback ports with keys of their own, stand for the hosts. Nothing of the
user's ssh configuration is read or written.

    many_machines_test.py MKBARCODE PAGE [unittest arguments]

PAGE is docs/scale.md, whose command is run as it stands, but for the path of mkbarcode and the size of a job.
"""

import base64
import getpass
import json
import os
import pathlib
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import threading
import time
import unittest

MKBARCODE = pathlib.Path()
PAGE = pathlib.Path()
SSHD = shutil.which("sshd", path=os.environ.get("PATH", "") + ":/usr/sbin:/sbin")
ROWS = 2000
ROWS_OF_A_JOB = 100
PATIENCE = 120  # seconds for what takes one

# Stands for mkbarcode on both hosts. On the one that is to die, it writes half of a job's lines, and then nothing more.
DRAWER = """#!/bin/sh
if [ "$TEST_HOST" != "$(cat '{dying}')" ]; then
  exec '{program}' "$@"
fi
'{program}' "$@" | head -n {half}
kill -STOP $$
"""


def free_port():
    with socket.socket() as listener:
        listener.bind(("127.0.0.1", 0))
        return listener.getsockname()[1]


def children(pid):
    """All processes below a process."""
    found = []
    waiting = [pid]
    while waiting:
        parent = waiting.pop()
        try:
            tasks = pathlib.Path(f"/proc/{parent}/task/{parent}/children").read_text(encoding="ascii")
        except OSError:
            continue
        below = [int(word) for word in tasks.split()]
        found += below
        waiting += below
    return found


def is_stopped(pid):
    try:
        return pathlib.Path(f"/proc/{pid}/stat").read_text(encoding="utf-8").rsplit(")", 1)[1].split()[0] == "T"
    except OSError:
        return False


def send(pid, number):
    try:
        os.kill(pid, number)
        return True
    except ProcessLookupError:
        return False


class Host:
    """An ssh server on a port of loopback."""

    TRIES = 20

    def __init__(self, folder, name):
        self.name = name
        self.log = folder / f"sshd_{name}.log"
        # Somebody else may take a port that was free a moment ago: only the server's own word counts.
        if not any(self.listens(folder) for _ in range(self.TRIES)):
            raise RuntimeError(f"{name} does not listen: " + self.log.read_text(encoding="utf-8"))

    def listens(self, folder):
        """Whether a server of its own has a port now."""
        self.port = free_port()
        configuration = folder / f"sshd_{self.name}"
        configuration.write_text(
            f"Port {self.port}\nListenAddress 127.0.0.1\nHostKey {folder}/host_key\n"
            f"AuthorizedKeysFile {folder}/key.pub\nPidFile none\nUsePAM no\nStrictModes no\n"
            "PasswordAuthentication no\nKbdInteractiveAuthentication no\nPermitRootLogin prohibit-password\n"
            # Start-up files of that HOME are none.
            f"MaxStartups 50\nSetEnv HOME={folder} TEST_HOST={self.name}\n",
            encoding="utf-8")
        self.log.unlink(missing_ok=True)
        self.process = subprocess.Popen([SSHD, "-D", "-f", configuration, "-E", self.log])
        deadline = time.monotonic() + PATIENCE
        while time.monotonic() < deadline and self.process.poll() is None:
            if self.log.exists() and f"listening on 127.0.0.1 port {self.port}." in self.log.read_text(encoding="utf-8"):
                return True
            time.sleep(0.05)
        self.kill()
        return False

    def kill(self):
        """As if the plug were pulled: server, connections and what they run."""
        below = children(self.process.pid)
        send(self.process.pid, signal.SIGKILL)
        for pid in below:
            send(pid, signal.SIGKILL)
        self.process.wait()


class ManyMachines(unittest.TestCase):
    def setUp(self):
        self.assertIsNotNone(SSHD, "there is no sshd; scripts/install-deps.sh --test installs it")
        self.assertIsNotNone(shutil.which("parallel"), "there is no parallel")
        if os.geteuid() == 0:
            pathlib.Path("/run/sshd").mkdir(mode=0o755, exist_ok=True)  # sshd of root asks for it
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        for key in ("host_key", "key"):
            subprocess.run(["ssh-keygen", "-q", "-t", "ed25519", "-N", "", "-f", self.folder / key], check=True)
        self.dying = self.folder / "dying"
        self.dying.write_text("none", encoding="utf-8")
        drawer = self.folder / "drawer"
        drawer.write_text(DRAWER.format(dying=self.dying, program=MKBARCODE, half=ROWS_OF_A_JOB // 2), encoding="utf-8")
        drawer.chmod(0o755)
        self.hosts = []
        for name in ("one", "two"):
            self.hosts.append(Host(self.folder, name))
            self.addCleanup(self.hosts[-1].kill)
        lines = [f"Host {host.name}\n  Port {host.port}\n" for host in self.hosts]
        self.configuration = self.folder / "ssh_config"
        self.configuration.write_text(
            "".join(lines) + f"Host *\n  HostName 127.0.0.1\n  User {getpass.getuser()}\n"
            f"  IdentityFile {self.folder}/key\n  IdentitiesOnly yes\n  IdentityAgent none\n"
            f"  UserKnownHostsFile {self.folder}/known_hosts\n  StrictHostKeyChecking no\n  LogLevel ERROR\n",
            encoding="utf-8")

    def command(self):
        """That of the page, without its files."""
        block = next(part for part in PAGE.read_text(encoding="utf-8").split("```") if part.startswith("sh\nparallel"))
        command = block.removeprefix("sh\n").replace("\\\n", " ").strip()
        for written, meant in ((" <rows.jsonl >labels.jsonl", ""), ("-N 5000", f"-N {ROWS_OF_A_JOB}"),
                               ("parallel ", f"exec parallel --will-cite --ssh 'ssh -F {self.configuration}' "),
                               ("'mkbarcode ", f"'{self.folder}/drawer ")):
            self.assertIn(written, command)
            command = command.replace(written, meant, 1)
        return command

    def start(self):
        """The command of docs/scale.md, waiting for rows."""
        environment = {**os.environ, "HOME": str(self.folder), "PARALLEL_HOME": str(self.folder / "parallel")}
        environment.pop("PARALLEL", None)
        self.output = self.folder / "labels.jsonl"
        command = self.command()
        with self.output.open("wb") as output:
            process = subprocess.Popen(["/bin/sh", "-c", command], stdin=subprocess.PIPE, stdout=output,
                                       stderr=subprocess.PIPE, env=environment)
        self.complaints = []
        self.addCleanup(process.stderr.close)
        reader = threading.Thread(target=lambda: self.complaints.append(process.stderr.read()))
        reader.start()
        self.addCleanup(reader.join)
        self.addCleanup(process.kill)
        return process

    @staticmethod
    def row(number):
        """Every hundredth row is one that Code 39 cannot encode."""
        text = f"ROW-{number:06}" if number % 100 else f"ROW_{number:06}"
        return json.dumps({"type": "code39", "text": text, "format": ("png", "svg")[number % 2]}).encode() + b"\n"

    def write(self, process):
        for number in range(1, ROWS + 1):
            process.stdin.write(self.row(number))
        process.stdin.close()

    def finish(self, process):
        self.assertEqual(process.wait(timeout=4 * PATIENCE), 0, self.complaints)

    def check_rows(self):
        """Each row stands in its place, once, and is the label that one machine makes."""
        alone = subprocess.run([MKBARCODE, "batch", "-", "-o", "-", "--quiet", "--errors", "/dev/null"],
                               input=b"".join(self.row(number) for number in range(1, ROWS + 1)),
                               stdout=subprocess.PIPE, check=False)
        self.assertEqual(alone.returncode, 1)
        expected = [json.loads(line) for line in alone.stdout.splitlines()]
        found = [json.loads(line) for line in self.output.read_bytes().splitlines()]
        self.assertEqual(len(expected), ROWS)
        self.assertEqual(len(found), ROWS)
        for number, (label, wanted) in enumerate(zip(found, expected), start=1):
            self.assertEqual(label["ok"], number % 100 != 0)
            # Each job counts its own rows.
            self.assertEqual(label["n"], (number - 1) % ROWS_OF_A_JOB + 1)
            self.assertEqual({**label, "n": number}, wanted)
        self.assertTrue(base64.b64decode(found[1]["data"]).startswith(b"\x89PNG"))

    def test_every_row_comes_out_once(self):
        process = self.start()
        self.write(process)
        self.finish(process)
        self.check_rows()

    def test_a_host_that_dies_in_the_middle_loses_nothing(self):
        self.dying.write_text(self.hosts[1].name, encoding="utf-8")
        process = self.start()
        writer = threading.Thread(target=self.write, args=(process,))
        writer.start()
        self.addCleanup(writer.join)
        self.wait_until_it_hangs(self.hosts[1])
        self.hosts[1].kill()
        self.finish(process)
        self.check_rows()

    def wait_until_it_hangs(self, host):
        """Until a job stands still there, of which some rows are drawn and the others in its hands."""
        deadline = time.monotonic() + PATIENCE
        while time.monotonic() < deadline:
            if any(is_stopped(pid) for pid in children(host.process.pid)):
                return
            time.sleep(0.05)
        self.fail("the second host never drew")


if __name__ == "__main__":
    MKBARCODE = pathlib.Path(sys.argv.pop(1)).resolve()
    PAGE = pathlib.Path(sys.argv.pop(1))
    unittest.main()
