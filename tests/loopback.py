"""Runs scripts of a test against servers of its own on this machine."""

import os
import re
import socket
import ssl
import subprocess
import threading

import program

ALLOWED = {"MORV_HTTPS_ALLOW_PRIVATE": "1"}


class Scripts:
    """Runs bodies of main()."""

    def __init__(self, vorc):
        self.vorc = os.path.realpath(vorc)

    def start(self, folder, body, **variables):
        """A running script, its output piped."""
        folder.write("s.c", "int main()\n{\n" + body + "\n  return 0;\n}\n")
        return subprocess.Popen([self.vorc, "-morv", "s.c"], cwd=folder.path, env={**os.environ, **variables},
                                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE)

    def run(self, body, timeout=60, files=None, **variables):
        """Standard output, without its last line end, and standard error."""
        with program.Folder() as folder:
            for name, content in (files or {}).items():
                folder.write(name, content)
            with self.start(folder, body, **variables) as process:
                try:
                    output, errors = process.communicate(timeout=timeout)
                except subprocess.TimeoutExpired:
                    process.kill()
                    raise
            printed = output.decode("latin-1").partition("executing main() ....\n")[2]
            return printed.removesuffix("\n"), errors.decode("latin-1")


def read_request(peer):
    """A request with all of its body, or what came of it."""
    peer.settimeout(10)
    asked = b""
    try:
        while piece := peer.recv(65536):
            asked += piece
            head, end, body = asked.partition(b"\r\n\r\n")
            told = re.search(rb"Content-Length: (\d+)", head)
            if end and len(body) >= (int(told.group(1)) if told else 0):
                break
    except OSError:
        pass
    return asked


class Server:
    """A port that reads a request from each connection and answers it with bytes, or lets a function
    (socket, number of the request) answer. It ends with a `with`."""

    def __init__(self, answer, context=None):
        self.answer, self.context, self.requests = answer, context, []
        self.socket = socket.create_server(("127.0.0.1", 0))
        self.port = self.socket.getsockname()[1]
        self.thread = threading.Thread(target=self.work, daemon=True)
        self.thread.start()

    def work(self):
        while True:
            try:
                plain = self.socket.accept()[0]
            except OSError:
                return
            try:
                with plain, (self.context.wrap_socket(plain, True) if self.context else plain) as peer:
                    self.requests.append(read_request(peer))
                    if callable(self.answer):
                        self.answer(peer, len(self.requests) - 1)
                    else:
                        peer.sendall(self.answer)
            except (OSError, ssl.SSLError):
                pass

    def __enter__(self):
        return self

    def __exit__(self, *_):
        # A waiting accept doesn't notice that its socket is closed.
        self.socket.shutdown(socket.SHUT_RDWR)
        self.socket.close()
        self.thread.join(0.2)
