"""A headless Chromium with one page, driven through its pipe: no port, no further package."""

import base64
import json
import os
import shutil
import subprocess
import tempfile


class Browser:
    """Everything that a page says on its console, throws or fetches is kept in `complaints`."""

    def __init__(self, program, dark=False, size=(1280, 800)):
        self.profile = tempfile.mkdtemp(prefix="tessera-browser-")
        reads_commands, self.commands = os.pipe()
        self.answers, writes_answers = os.pipe()
        os.set_inheritable(reads_commands, True)
        os.set_inheritable(writes_answers, True)

        def as_three_and_four():
            # The numbers that the program expects; a number already in place is no copy of itself.
            first, second = os.dup(reads_commands), os.dup(writes_answers)
            os.dup2(first, 3)
            os.dup2(second, 4)

        arguments = ["--headless=new", "--no-sandbox", "--disable-gpu", "--no-first-run",
                     "--disable-background-networking", "--remote-debugging-pipe",
                     "--force-device-scale-factor=1", f"--user-data-dir={self.profile}",
                     f"--window-size={size[0]},{size[1]}"]
        self.process = subprocess.Popen([program, *arguments, "about:blank"], close_fds=False,
                                        preexec_fn=as_three_and_four, stdout=subprocess.DEVNULL,
                                        stderr=subprocess.DEVNULL)
        os.close(reads_commands)
        os.close(writes_answers)
        self.buffer = b""
        self.number = 0
        self.complaints = []
        self.loaded = False
        self.session = None
        target = self.call("Target.createTarget", url="about:blank")["targetId"]
        self.session = self.call("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        for domain in ("Page", "Runtime", "Log", "Network"):
            self.call(f"{domain}.enable")
        self.call("Emulation.setDeviceMetricsOverride", width=size[0], height=size[1],
                  deviceScaleFactor=1, mobile=False)
        self.call("Emulation.setEmulatedMedia", features=[
            {"name": "prefers-color-scheme", "value": "dark" if dark else "light"}])

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.kill()
        self.process.wait()
        os.close(self.commands)
        os.close(self.answers)
        shutil.rmtree(self.profile, ignore_errors=True)

    def message(self):
        while b"\0" not in self.buffer:
            part = os.read(self.answers, 1 << 20)
            if not part:
                raise SystemExit("the browser has ended")
            self.buffer += part
        text, self.buffer = self.buffer.split(b"\0", 1)
        return json.loads(text)

    def call(self, method, **parameters):
        self.number += 1
        command = {"id": self.number, "method": method, "params": parameters}
        if self.session:
            command["sessionId"] = self.session
        os.write(self.commands, json.dumps(command).encode() + b"\0")
        while True:
            message = self.message()
            if message.get("id") == self.number:
                if "error" in message:
                    raise SystemExit(f"{method}: {message['error']['message']}")
                return message["result"]
            self.note(message)

    def note(self, message):
        method, parameters = message.get("method"), message.get("params", {})
        if method == "Page.loadEventFired":
            self.loaded = True
        elif method == "Runtime.exceptionThrown":
            self.complaints.append(parameters["exceptionDetails"])
        elif method == "Runtime.consoleAPICalled":
            self.complaints.append(parameters["args"])
        elif method == "Log.entryAdded":
            self.complaints.append(parameters["entry"])
        elif method == "Network.requestWillBeSent":
            url = parameters["request"]["url"]
            if not url.startswith(("file:", "about:", "data:")):
                self.complaints.append(f"the page asks for {url}")

    def open(self, path):
        self.loaded = False
        self.call("Page.navigate", url="file://" + os.path.abspath(path))
        while not self.loaded:
            self.note(self.message())

    def ask(self, expression):
        """The value of an expression, once what it promises is there and the page is drawn."""
        drawn = f"(async () => {{ const value = await ({expression});" \
                " await new Promise((done) => requestAnimationFrame(() => setTimeout(done)));" \
                " return value; })()"
        result = self.call("Runtime.evaluate", expression=drawn, awaitPromise=True,
                           returnByValue=True)
        if "exceptionDetails" in result:
            raise SystemExit(f"{expression}: {result['exceptionDetails']}")
        return result["result"].get("value")

    def press(self, key, control=False):
        for kind in ("keyDown", "keyUp"):
            self.call("Input.dispatchKeyEvent", type=kind, key=key, code=key,
                      modifiers=2 if control else 0)
        self.ask("0")

    def picture(self, path):
        data = self.call("Page.captureScreenshot", format="png")["data"]
        with open(path, "wb") as file:
            file.write(base64.b64decode(data))
