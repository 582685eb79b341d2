"""A PostgreSQL server of a test's own: in a temporary folder, on a loopback port, gone at the end."""

import glob
import os
import shutil
import socket
import subprocess
import tempfile

PASSWORD = "s3cret-of-ann"


def programs():
    """The folder of the server's programs, None where there are none."""
    found = sorted(glob.glob("/usr/lib/postgresql/*/bin/initdb"))
    beside = shutil.which("initdb")
    return os.path.dirname(found[-1]) if found else beside and os.path.dirname(os.path.realpath(beside))


class Server:
    def __init__(self):
        self.programs = programs()
        self.folder = tempfile.mkdtemp(prefix="vorc-server-")
        self.data = os.path.join(self.folder, "data")
        # The server refuses to run as root.
        self.user = ["runuser", "-u", "nobody", "--"] if os.geteuid() == 0 else []
        if self.user:
            shutil.chown(self.folder, "nobody")
        with socket.create_server(("127.0.0.1", 0)) as free:
            self.port = free.getsockname()[1]

    def run(self, name, *arguments):
        command = [*self.user, os.path.join(self.programs, name), *arguments]
        return subprocess.run(command, cwd=self.folder, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                              stderr=subprocess.PIPE, check=True, timeout=120)

    def start(self):
        settings = f"-c port={self.port} -c listen_addresses=127.0.0.1 -c unix_socket_directories= -c fsync=off"
        self.run("pg_ctl", "-D", self.data, "-w", "-l", os.path.join(self.folder, "log"), "-o", settings, "start")

    def stop(self, how="immediate"):
        self.run("pg_ctl", "-D", self.data, "-m", how, "stop")

    def __enter__(self):
        secret = os.path.join(self.folder, "password")
        with open(secret, "w") as file:
            file.write(PASSWORD + "\n")
        self.run("initdb", "-D", self.data, "-U", "ann", "-A", "scram-sha-256", "--pwfile", secret, "--no-sync",
                 "-E", "UTF8", "--locale", "C")
        self.start()
        return self

    def __exit__(self, *_):
        try:
            self.stop()
        finally:
            shutil.rmtree(self.folder, ignore_errors=True)
