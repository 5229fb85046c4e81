#!/usr/bin/env python3
"""client.py [PROGRAM]: talks to `kelo serve --stdio`; runs a script, stops an endless one, saves a file, gets a figure."""
import base64, json, subprocess, sys, tempfile


class Kelo:
    def __init__(self, program, folder):
        command = [program, "serve", "--stdio", "--workdir", folder, "--state", folder + "/.state", "--documents", folder]
        self.process = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, encoding="utf-8")
        self.requests, self.answers, self.items = 0, {}, []

    def send(self, method, **params):
        self.requests += 1
        message = {"jsonrpc": "2.0", "id": self.requests, "method": method, "params": params}
        print(json.dumps(message), file=self.process.stdin, flush=True)
        return self.requests

    def answer(self, request):
        while request not in self.answers:  # answers may come in another order; notifications come in between
            message = json.loads(self.process.stdout.readline())
            if "id" in message:
                self.answers[message["id"]] = message.get("result", message.get("error"))
            elif message["method"] == "console/item":
                self.items.append(message["params"]["text"])
        return self.answers.pop(request)

    def call(self, method, **params):
        return self.answer(self.send(method, **params))


with tempfile.TemporaryDirectory() as folder:
    kelo = Kelo(sys.argv[1] if len(sys.argv) > 1 else "build/kelo", folder)
    path = kelo.call("files/newFile", folder="", name="wave")["path"]
    revision = kelo.call("files/read", path=path)["revision"]
    kelo.call("files/write", path=path, text="x = 0:0.1:7;\nplot(x, sin(x))\nhighest = max(sin(x))\n", revision=revision)
    print(kelo.call("file/run", path=path)["status"], kelo.items[-1])
    print(base64.b64decode(kelo.call("figure/picture", format="svg")["base64"]).decode()[:4])
    endless = kelo.send("console/run", text="while true, highest = highest + 1; end")
    kelo.call("run/stop")
    print(kelo.answer(endless)["status"], kelo.items[-1])
