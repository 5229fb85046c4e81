#!/usr/bin/env python3
"""A client of `kelo serve --stdio`: client.py [PROGRAM] runs a script, stops an endless one, edits and saves a file."""
import itertools, json, subprocess, sys, tempfile


class Kelo:
    def __init__(self, program, work_dir):
        self.process = subprocess.Popen([program, "serve", "--stdio", "--workdir", work_dir, "--state", work_dir + "/.state"],
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True, encoding="utf-8")
        self.ids, self.answers, self.items = itertools.count(1), {}, []

    def send(self, method, **params):
        number = next(self.ids)
        print(json.dumps({"jsonrpc": "2.0", "id": number, "method": method, "params": params}), file=self.process.stdin, flush=True)
        return number

    def receive(self, number):
        while number not in self.answers:
            message = json.loads(self.process.stdout.readline())
            if "id" in message:
                self.answers[message["id"]] = message.get("result", message.get("error"))
            elif message["method"] == "console/item":
                self.items.append(message["params"]["text"])
        return self.answers.pop(number)

    def call(self, method, **params):
        return self.receive(self.send(method, **params))


with tempfile.TemporaryDirectory() as folder:
    kelo = Kelo(sys.argv[1] if len(sys.argv) > 1 else "build/kelo", folder)
    print(kelo.call("console/run", text="x = 1:3; total = sum(x)")["status"], kelo.items[-1])
    path = kelo.call("files/newFile", folder="", name="area")["path"]
    opened = kelo.call("files/read", path=path)
    kelo.call("files/write", path=path, text="r = 2;\narea = pi*r^2\n", revision=opened["revision"])
    print(kelo.call("file/run", path=path)["status"], kelo.items[-1])
    endless = kelo.send("console/run", text="while true, x = x + 1; end")
    kelo.call("run/stop")
    print(kelo.receive(endless)["status"], kelo.items[-1])
