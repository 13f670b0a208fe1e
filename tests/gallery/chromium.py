"""A headless Chromium, driven over its DevTools pipe: messages in JSON, each ended by a zero byte."""

import fcntl
import json
import os
import select
import shutil
import subprocess
import tempfile
import time


class BrowserError(Exception):
    """The browser is missing, gone or silent, or a page's script threw."""


class Chromium:
    """One browser process with one page. To be used in a `with` statement."""

    # Neither user nor kernel of a container may allow the sandbox; the pages are this project's own.
    OPTIONS = ["--headless=new", "--no-sandbox", "--disable-dev-shm-usage", "--disable-gpu", "--remote-debugging-pipe",
               "--no-first-run", "--disable-background-networking", "--disable-component-update", "--disable-sync",
               "--disable-extensions", "--mute-audio", "--force-color-profile=srgb", "--hide-scrollbars",
               "--force-device-scale-factor=1"]

    def __init__(self, program="chromium", timeout=300):
        self.timeout = timeout
        self.events = []
        self._number = 0
        self._received = b""
        path = shutil.which(program)
        if path is None:
            raise BrowserError(f"there is no {program}; scripts/install-deps.sh --test installs it")
        self._home = tempfile.mkdtemp(prefix="gallery_browser_")
        self._process = self._start(path)
        target = self.call("Target.createTarget", url="about:blank")["targetId"]
        self._session = self.call("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        for domain in ("Page", "Runtime", "Log", "Network"):
            self.send(f"{domain}.enable")
        self.send("Emulation.setFocusEmulationEnabled", enabled=True)

    def _start(self, path):
        # The browser reads descriptor 3 and writes descriptor 4.
        from_us, self._out = os.pipe()
        self._in, from_it = os.pipe()

        def place():
            # Copies first, out of the way: either may have the other's number.
            read, write = (fcntl.fcntl(end, fcntl.F_DUPFD_CLOEXEC, 10) for end in (from_us, from_it))
            os.dup2(read, 3)
            os.dup2(write, 4)

        environment = dict(os.environ, HOME=self._home, XDG_CONFIG_HOME=self._home, XDG_CACHE_HOME=self._home)
        self._errors = tempfile.TemporaryFile()
        process = subprocess.Popen([path, *self.OPTIONS, f"--user-data-dir={self._home}/profile"], close_fds=False,
                                   preexec_fn=place, env=environment, stdin=subprocess.DEVNULL,
                                   stdout=subprocess.DEVNULL, stderr=self._errors, start_new_session=True)
        os.close(from_us)
        os.close(from_it)
        return process

    def __enter__(self):
        return self

    def __exit__(self, *_):
        try:
            self.call("Browser.close")
            self._process.wait(60)
        except (BrowserError, OSError, subprocess.TimeoutExpired):
            self._process.kill()
            self._process.wait()
        os.close(self._out)
        os.close(self._in)
        shutil.rmtree(self._home, ignore_errors=True)

    def _silent(self, what):
        self._errors.seek(0)
        last = self._errors.read().decode(errors="replace").strip().splitlines()[-5:]
        return BrowserError(f"{what}; its last lines: " + " | ".join(last))

    def _receive(self, deadline):
        """The next message, or None when the deadline has passed."""
        while b"\0" not in self._received:
            readable, _, _ = select.select([self._in], [], [], max(0, deadline - time.monotonic()))
            if not readable:
                return None
            part = os.read(self._in, 1 << 20)
            if not part:
                raise self._silent("the browser is gone")
            self._received += part
        message, self._received = self._received.split(b"\0", 1)
        return json.loads(message)

    def call(self, method, session=None, **parameters):
        """The result of a method. Events that come meanwhile are kept."""
        self._number += 1
        message = {"id": self._number, "method": method, "params": parameters}
        if session is not None:
            message["sessionId"] = session
        data = json.dumps(message).encode() + b"\0"
        while data:
            data = data[os.write(self._out, data):]
        deadline = time.monotonic() + self.timeout
        while True:
            answer = self._receive(deadline)
            if answer is None:
                raise self._silent(f"no answer to {method} within {self.timeout} s")
            if answer.get("id") == self._number:
                if "error" in answer:
                    raise BrowserError(f"{method}: {answer['error']['message']}")
                return answer["result"]
            if "method" in answer:
                self.events.append(answer)

    def send(self, method, **parameters):
        """The same, to the page."""
        return self.call(method, self._session, **parameters)

    def wait_for(self, method, since=0):
        """Waits until an event of that name has come, the first `since` events not counted."""
        deadline = time.monotonic() + self.timeout
        while not any(event["method"] == method for event in self.events[since:]):
            message = self._receive(deadline)
            if message is None:
                raise self._silent(f"no {method} within {self.timeout} s")
            self.events.append(message)

    def open(self, url):
        since = len(self.events)
        self.send("Page.navigate", url=url)
        self.wait_for("Page.loadEventFired", since)

    def run(self, expression):
        """The value of a JavaScript expression in the page; promises are waited for."""
        result = self.send("Runtime.evaluate", expression=expression, awaitPromise=True, returnByValue=True)
        if "exceptionDetails" in result:
            details = result["exceptionDetails"]
            raise BrowserError(details.get("exception", {}).get("description", details["text"]))
        return result["result"].get("value")

    def look_at(self, width, height, scheme):
        """Sets the window's size and the scheme of colours that its user prefers."""
        self.send("Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=1, mobile=False)
        self.send("Emulation.setEmulatedMedia", features=[{"name": "prefers-color-scheme", "value": scheme},
                                                          {"name": "prefers-reduced-motion", "value": "reduce"}])
