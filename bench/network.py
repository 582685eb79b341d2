#!/usr/bin/env python3
"""Times requests over TLS on the loopback beside curl, and what a script without network pays:

    bench/network.py path/to/vorc [path/to/an/older/vorc]

Each time is the median of whole runs, both programs in turns. Both read the same certificates: the
system's and one made here. The older program, if given, is what start-up is compared with."""

import http.server
import os
import shutil
import ssl
import subprocess
import sys
import tempfile
import threading
import time

RUNS = 7
START_RUNS = 301
REQUESTS = 200
SYSTEM_CERTIFICATES = "/etc/ssl/certs/ca-certificates.crt"
SMALL = b"a small page\n"
LARGE = b"0123456789abcde\n" * (8 * 65536 - 64)  # with its head just below 8 MiB


class Pages(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        body = LARGE if self.path == "/large" else SMALL
        self.send_response(200)
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)

    def log_message(self, *_):
        pass


def make_certificates(folder):
    key, own, all_of_them = (os.path.join(folder, name) for name in ("key.pem", "own.pem", "all.pem"))
    subprocess.run(["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes",
                    "-keyout", key, "-out", own, "-days", "2", "-subj", "/CN=localhost", "-addext",
                    "subjectAltName=DNS:localhost"], check=True, capture_output=True)
    with open(all_of_them, "wb") as file:
        for name in (SYSTEM_CERTIFICATES, own):
            if os.path.exists(name):
                with open(name, "rb") as part:
                    shutil.copyfileobj(part, file)
    return key, own, all_of_them


def serve(key, own):
    """The port of a server in a process of its own, so that it doesn't wait for this one's threads."""
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(own, key)
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Pages)
    server.socket = context.wrap_socket(server.socket, True, do_handshake_on_connect=False)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    return server.server_address[1]


def seconds(command, environment):
    begin = time.perf_counter()
    output = subprocess.run(command, env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, check=True).stdout
    return time.perf_counter() - begin, output


def medians(commands, environment, runs):
    """Median times of commands that run in turns, and what each printed."""
    times, outputs = [[] for _ in commands], [b""] * len(commands)
    for _ in range(runs):
        for number, command in enumerate(commands):
            taken, outputs[number] = seconds(command, environment)
            times[number].append(taken)
    return [sorted(each)[runs // 2] for each in times], outputs


def script(folder, name, body):
    path = os.path.join(folder, name)
    with open(path, "w") as file:
        file.write("int main()\n{\n  int i;\n" + body + "  return 0;\n}\n")
    return path


def compare(name, commands, environment, runs=RUNS):
    (ours, other), outputs = medians(commands, environment, runs)
    print(f"{name:<24} {ours * 1000:9.2f} ms   beside {other * 1000:9.2f} ms, ratio {ours / other:5.3f}", flush=True)
    return outputs


def main():
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    vorc = [os.path.abspath(sys.argv[1]), "-morv", "-morvquiet"]
    with tempfile.TemporaryDirectory(prefix="vorc-bench-") as folder:
        key, own, certificates = make_certificates(folder)
        environment = {**os.environ, "SSL_CERT_FILE": certificates, "MORV_HTTPS_ALLOW_PRIVATE": "1"}
        url = f"https://localhost:{serve(key, own)}"
        curl = ["curl", "-s", "--cacert", certificates, "-H", "Connection: close"]
        many = script(folder, "many.c", f"""  for (i = 0; i < {REQUESTS}; i++)
  {{
    printf("%s", morv_https_get("{url}/small", ""));
  }}
""")
        ours, theirs = compare(f"{REQUESTS} requests", [[*vorc, many], [*curl, f"{url}/small?[1-{REQUESTS}]"]], environment)
        if ours.split() != theirs.split() or ours.count(SMALL) < REQUESTS:
            sys.exit("the answers differ")
        large = script(folder, "large.c", f"""  $page = morv_https_get("{url}/large", "");
  printf("%d", morv_strlen($page));
""")
        ours, theirs = compare("8 MiB", [[*vorc, large], [*curl, "-o", "/dev/null", "-w", "%{size_download}\n",
                                                           f"{url}/large"]], environment)
        if ours.split() != theirs.split():
            sys.exit(f"the sizes differ: {ours} {theirs}")
        if len(sys.argv) > 2:
            older = [os.path.abspath(sys.argv[2]), "-morv", "-morvquiet"]
            line = script(folder, "line.c", '  printf("hi");\n')
            compare("start-up", [[*vorc, line], [*older, line]], environment, START_RUNS)


if __name__ == "__main__":
    main()
