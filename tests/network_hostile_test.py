#!/usr/bin/env python3
"""What scripts meet in a hostile network: broken URLs, headers, answers, certificates and tool servers,
addresses that must not be reached, and peers that never answer. Nothing may leak meanwhile.

    network_hostile_test.py path/to/vorc path/to/libtest_resolver.so [requests in the leak count]
"""

import os
import random
import signal
import ssl
import subprocess
import sys
import time

import loopback
import program

RESOLVER = os.path.realpath(sys.argv[2])
LEAK_REQUESTS = int(sys.argv[3]) if len(sys.argv) > 3 else 150
WARM_UP = 50
TOOL_SERVER = os.path.join(os.path.dirname(os.path.realpath(__file__)), "net", "tool_server.py")
HEAD = b"HTTP/1.1 200 OK\r\n\r\n"
LARGEST = 0x800000
scripts = loopback.Scripts(sys.argv[1])
run, check = scripts.run, program.check


def fetch(server, times=1, scheme="http", host="localhost", **variables):
    """What so many requests answer, each as "[body] status"."""
    body = (f'  int i;\n  for (i = 0; i < {times}; i++)\n  {{\n    $page = morv_https_get("{scheme}://{host}:{server.port}/", "");\n'
            '    printf("%s", isprint("[", $page, "] ", morv_https_status(), "|"));\n  }')
    return run(body, **{**loopback.ALLOWED, **variables})[0].removesuffix("|").split("|\n")


def test_urls():
    """None of these reaches the port that stands in all of them."""
    with loopback.Server(HEAD + b"reached") as server:
        good = f"http://127.0.0.1:{server.port}/"
        control = [good[:place] + chr(byte) + good[place:] for byte in (1, 8, 9, 12, 13, 27, 31, 127) for place in range(len(good) + 1)]
        ports = [f"http://127.0.0.1:{port}/" for port in (65536, 65536 + server.port, 2**32 + server.port, 2**64 + server.port)]
        others = ["", " " + good, good[1:], good.upper(), "ftp:" + good[5:], "file:///etc/passwd", "//127.0.0.1/", "http://", "https://", "http",
                  f"http:/127.0.0.1:{server.port}/", f"http:///127.0.0.1:{server.port}/", f"http://:{server.port}/",
                  f"http://[::1]:{server.port}/", f"http://[127.0.0.1]:{server.port}/", f"http://{'1' * 256}:{server.port}/", good + "p" * 1023]
        urls = control + ports + others
        calls = "".join(f'  n = n + morv_strlen(morv_https_get("{url}", "")) + morv_https_status();\n' for url in urls)
        out, _ = run("  int n;\n" + calls + '  printf("%d", n);', **loopback.ALLOWED)
        check(f"{len(urls)} malformed URLs", (out, len(server.requests), len(urls) >= 200), ("0", 0, True))


def test_headers():
    """A header for each byte that can stand in a text; those with control characters are dropped."""
    told = b"".join(b"X%d: a%cb\n" % (byte, byte) for byte in range(1, 256)) + b"no name\n:\r\nLast:\r\r\n"
    kept = [b"X10: a"] + [b"X%d: a%cb" % (byte, byte) for byte in range(32, 256) if byte != 127] + [b"Last:"]
    with loopback.Server(HEAD) as server:
        run(f'  morv_https_get("http://localhost:{server.port}/", morv_file_read("headers"));', files={"headers": told}, **loopback.ALLOWED)
        check("headers of every byte", server.requests[0].split(b"\r\n")[4:-2], kept)


def expected(answer):
    """What a cut answer gives, by other means than the program's."""
    head, end, body = answer.partition(b"\r\n\r\n")
    if not end:
        return "[] 0"
    content = b""
    if b"chunked" in head:
        while b"\r\n" in body:
            size, _, rest = body.partition(b"\r\n")
            size = int(size, 16)
            if size == 0 or len(rest) < size:
                break
            content, body = content + rest[:size], rest[size:].removeprefix(b"\r\n") if len(rest) >= size + 2 else rest[size:]
    else:
        content = body
    return f"[{content.decode()}] 200"


def test_answers():
    for name, answer in (("plain", HEAD + b"the body"), ("chunked", HEAD[:-2] + b"Transfer-Encoding: chunked\r\n\r\n3\r\nabc\r\n0a\r\n"
                                                                   b"0123456789\r\n0\r\n\r\n")):
        with loopback.Server(lambda peer, number, whole=answer: peer.sendall(whole[:number])) as server:
            check(f"{name}, cut at every byte", fetch(server, len(answer) + 1),
                  [expected(answer[:length]) for length in range(len(answer) + 1)])
    noise = random.Random(1)
    with loopback.Server(lambda peer, _: peer.sendall(noise.randbytes(noise.randrange(3000)) + b"\r\n\r\n")) as server:
        check("noise", len(fetch(server, 100)), 100)

    def endless(peer, number):
        peer.sendall(HEAD if number == 0 else b"HTTP/1.1 200 OK\r\n")
        while True:
            peer.sendall(b"X: y\r\n" * 10000)

    with loopback.Server(endless) as server:
        body = "".join(f'  printf("%d", morv_strlen(morv_https_get("http://localhost:{server.port}/", "")));\n' for _ in range(2))
        check("endless answers", run(body, **loopback.ALLOWED)[0], f"{LARGEST - len(HEAD)}\n0")
    large = HEAD[:-2] + b"Transfer-Encoding: chunked\r\n\r\n" + b"10000\r\n" + b"z" * 65536 + b"\r\n"
    rest = b"10000\r\n" + b"z" * 65536 + b"\r\n"
    with loopback.Server(large + rest * 130) as server:
        check("chunks beyond the limit", run(f'  printf("%d", morv_strlen(morv_https_get("http://localhost:{server.port}/", "")));',
                                             **loopback.ALLOWED)[0], str(LARGEST // len(rest) * 65536))


def test_slowness():
    def slow(peer, _):
        peer.sendall(head)
        for byte in b"slowly":
            peer.sendall(bytes([byte]))
            time.sleep(1.8)

    for head, answer in ((b"", "[] 0"), (HEAD, "[s] 200")):
        with loopback.Server(slow) as server:
            begin = time.monotonic()
            check("a byte now and then", fetch(server, MORV_HTTPS_TIMEOUT_MS="600"), [answer])
            check("a byte now and then, the time", time.monotonic() - begin < 8, True)

    def late(peer, _):
        time.sleep(0.4)
        peer.sendall(HEAD + b"late")

    for limit, answer in (("0", "[late] 200"), ("-1", "[late] 200"), ("x", "[late] 200"), ("99999999999999999999", "[late] 200"),
                          ("100", "[] 0"), ("100ms", "[] 0")):
        with loopback.Server(late) as server:
            check("limit " + limit, fetch(server, MORV_HTTPS_TIMEOUT_MS=limit), [answer])


class Authority:
    """Signs certificates in a folder."""

    def __init__(self, folder):
        self.folder = folder
        folder.write("ca.conf", "[ca]\ndefault_ca=d\n[d]\ndatabase=index\nnew_certs_dir=.\nrand_serial=yes\ndefault_md=sha256\npolicy=p\n"
                     "copy_extensions=copy\nunique_subject=no\n[p]\ncommonName=supplied\n")
        folder.write("index", "")
        self.request("root", "-x509", "-days", "2", "-subj", "/CN=authority of a test")

    def path(self, name):
        return os.path.join(self.folder.path, name)

    def openssl(self, *words):
        subprocess.run(["openssl", *words], cwd=self.folder.path, check=True, capture_output=True)

    def request(self, name, *words):
        self.openssl("req", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes", "-keyout", f"{name}.key",
                     "-out", f"{name}.pem", *words)

    def server(self, name, alternative, begin=-1, end=1, own=False):
        """What a server with a certificate for these days from now needs."""
        words = ["-subj", f"/CN={name}", "-addext", f"subjectAltName={alternative}"]
        if own:
            self.request(name, "-x509", *words)
        else:
            self.request(name, *words)
            days = [time.strftime("%Y%m%d%H%M%SZ", time.gmtime(time.time() + 86400 * day)) for day in (begin, end)]
            self.openssl("ca", "-batch", "-config", "ca.conf", "-cert", "root.pem", "-keyfile", "root.key", "-in", f"{name}.pem",
                         "-out", f"{name}.pem", "-notext", "-startdate", days[0], "-enddate", days[1])
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(self.path(f"{name}.pem"), self.path(f"{name}.key"))
        return context


def test_certificates():
    with program.Folder() as folder:
        authority = Authority(folder)
        trusted = {"SSL_CERT_FILE": authority.path("root.pem")}
        fine = authority.server("localhost", "DNS:localhost")
        page = HEAD + b"sealed"
        for name, context, host, answer in (
                ("signed", fine, "localhost", "[sealed] 200"),
                ("of this address", authority.server("address", "IP:127.0.0.1"), "127.0.0.1", "[sealed] 200"),
                ("any name below", authority.server("wild", "DNS:*.localhost"), "localhost", "[] 0"),
                ("another host's", fine, "127.0.0.1", "[] 0"),
                ("another name", authority.server("other", "DNS:localhost.example"), "localhost", "[] 0"),
                ("expired", authority.server("old", "DNS:localhost", -2, -1), "localhost", "[] 0"),
                ("not yet valid", authority.server("new", "DNS:localhost", 1, 2), "localhost", "[] 0"),
                ("self-signed", authority.server("own", "DNS:localhost", own=True), "localhost", "[] 0"),
                ("no TLS", None, "localhost", "[] 0")):
            with loopback.Server(page, context) as server:
                # Who waits for a request in plain text never answers the first step of a handshake.
                limit = "1000" if context is None else "20000"
                check("certificate: " + name, fetch(server, 1, "https", host, MORV_HTTPS_TIMEOUT_MS=limit, **trusted), [answer])
        with loopback.Server(page, fine) as server:
            check("nobody's authority", fetch(server, 1, "https", SSL_CERT_FILE="/dev/null", SSL_CERT_DIR="/dev/null"), ["[] 0"])
            check("plain where TLS is spoken", fetch(server)[0][-2:], " 0")
        leaks(authority, trusted, fine)


def state_of(pid):
    """Descriptors, threads, children and kilobytes of a process."""
    with open(f"/proc/{pid}/status") as file:
        status = dict(line.split(":", 1) for line in file)
    with open(f"/proc/{pid}/task/{pid}/children") as file:
        children = len(file.read().split())
    return len(os.listdir(f"/proc/{pid}/fd")), int(status["Threads"]), children, int(status["VmRSS"].split()[0])


def leaks(authority, trusted, context):
    """Requests that succeed, fail and break off, and tool servers, over and over."""
    samples = []

    def answer(peer, number):
        if number in (WARM_UP, WARM_UP + LEAK_REQUESTS):
            samples.append(state_of(script.pid))
        peer.sendall(HEAD + b"x" * 1000 if number % 2 else b"")

    with loopback.Server(answer, context) as server, program.Folder() as folder:
        body = f"""  int i;
  int h;
  for (i = 0; i <= {WARM_UP + LEAK_REQUESTS}; i++)
  {{
    morv_https_get("https://localhost:{server.port}/", "");
    morv_https_get("https://127.0.0.1:{server.port}/", "");
    morv_https_get("http://localhost:1/", "");
    morv_openai_chat("http://localhost:1", "", "", "");
    if (i % 50 == 0)
    {{
      h = morv_mcp_connect("{sys.executable} {TOOL_SERVER} fine");
      morv_mcp_call(h, "echo", "{{}}");
      morv_mcp_disconnect(h);
      morv_mcp_connect("exit 1");
    }}
  }}"""
        # A sanitizer keeps what was freed for a while.
        sanitizer = os.environ.get("ASAN_OPTIONS", "") + ":quarantine_size_mb=1:thread_local_quarantine_size_kb=64"
        script = scripts.start(folder, body, ASAN_OPTIONS=sanitizer, **{**loopback.ALLOWED, **trusted})
        script.communicate(timeout=300)
    before, after = samples
    check("descriptors, threads and children after %d requests" % LEAK_REQUESTS, after[:3], before[:3])
    check("%d KB before, %d KB after %d requests" % (before[3], after[3], LEAK_REQUESTS), after[3] - before[3] < 2048, True)


def attempts(body, **variables):
    """Where a script tried to connect."""
    sanitizer = os.environ.get("ASAN_OPTIONS", "") + ":verify_asan_link_order=0"
    _, errors = run(body, LD_PRELOAD=RESOLVER, ASAN_OPTIONS=sanitizer, **variables)
    return [line.removeprefix("connect ") for line in errors.splitlines() if line.startswith("connect ")]


def test_addresses():
    def get(host):
        return f'  morv_https_get("http://{host}:81/", "");\n'

    spelled = []
    for address in ("0.0.0.1", "10.1.2.3", "127.0.0.1", "169.254.169.254", "172.16.0.1", "192.168.1.1", "100.64.0.1", "192.0.0.1",
                    "198.18.0.1", "198.51.7.8", "203.0.7.8", "224.0.0.1", "255.255.255.255"):
        parts = [int(part) for part in address.split(".")]
        number = int.from_bytes(bytes(parts), "big")
        spelled += [address, str(number), hex(number), f"0{number:o}", ".".join(map(hex, parts)), ".".join(f"0{part:o}" for part in parts),
                    f"{parts[0]}.{number % 2**24}", f"0x{parts[0]:X}.{parts[1]}.{number % 2**16}"]
    spelled += ["localhost", "0"]
    body = "".join(map(get, spelled))
    check(f"{len(spelled)} spellings of reserved addresses", attempts(body), [])
    check("the same where they are allowed", len(attempts(body, **loopback.ALLOWED)) >= len(spelled), True)
    reserved = "::1,::,fe80::1,fd00::1,ff02::1,::ffff:127.0.0.1,::ffff:10.0.0.1,127.0.0.1,10.0.0.1"
    for name, addresses, tried in (("reserved", reserved, []),
                                   ("both kinds", "127.0.0.1,192.0.2.1,::1,2001:db8::1,::ffff:10.0.0.1,::ffff:192.0.2.2",
                                    ["192.0.2.1", "2001:db8::1", "::ffff:192.0.2.2"]),
                                   ("another answer for each question", "192.0.2.1;127.0.0.1", ["192.0.2.1"])):
        check("a name: " + name, attempts(get("name.test"), TEST_ADDRESSES=addresses), tried)
    with loopback.Server(HEAD + b"here") as server:
        check("the second address answers", attempts(f'  morv_https_get("http://x.test:{server.port}/", "");', TEST_CONNECT="1",
              TEST_ADDRESSES="::ffff:127.0.0.2,127.0.0.1", **loopback.ALLOWED)[-1], "127.0.0.1")
    script = '  morv_setenv("MORV_HTTPS_ALLOW_PRIVATE", "1");\n' + get("127.0.0.1")
    check("what a confined script allows itself", attempts(script, MORV_FILE_ROOT="/"), [])


def runs(pid):
    """False for a process that has ended, though nobody may have asked for its status yet."""
    try:
        with open(f"/proc/{int(pid)}/cmdline", "rb") as file:
            return file.read() != b""
    except OSError:
        return False


def interrupt(name, body, started, number=signal.SIGINT, **variables):
    """A script that waits for ever ends by a signal, and so does what it started."""
    with program.Folder() as folder:
        script = scripts.start(folder, body, **{**loopback.ALLOWED, **variables})
        deadline = time.monotonic() + 20
        while not started(script.pid) and time.monotonic() < deadline:
            time.sleep(0.02)
        time.sleep(0.1)
        children = subprocess.run(["pgrep", "-P", str(script.pid)], capture_output=True, check=False).stdout.split()
        script.send_signal(number)
        try:
            script.communicate(timeout=10)
        except subprocess.TimeoutExpired:
            script.kill()
        deadline = time.monotonic() + 5
        while (left := list(filter(runs, children))) and time.monotonic() < deadline:
            time.sleep(0.02)
        check(name, (script.returncode, left), (-number, []))


def test_silence():
    with loopback.Server(lambda peer, _: time.sleep(2)) as server:
        interrupt("a page that never comes", f'  morv_https_get("http://localhost:{server.port}/", "");', lambda _: server.requests)

    def connected(pid):
        return subprocess.run(["pgrep", "-P", str(pid), "-f", "tool_server"], capture_output=True, check=False).returncode == 0

    for mode in ("deaf", "endless"):
        body = (f'  int h;\n  h = morv_mcp_connect("{sys.executable} {TOOL_SERVER} stubborn");\n'
                f'  h = morv_mcp_connect("{sys.executable} {TOOL_SERVER} {mode}; true");\n  ifprint("ready", h);\n'
                '  morv_mcp_call(h, "echo", "{}");')
        for number in (signal.SIGINT, signal.SIGTERM):
            interrupt(f"a tool server, {mode}, signal {number}", body,
                      lambda pid: connected(pid) and os.path.exists(f"/proc/{pid}/cwd/ready"), number)
    left = subprocess.run(["pgrep", "-f", TOOL_SERVER], capture_output=True, check=False).stdout
    check("no tool server is left", left, b"")


def test_tool_servers():
    connect = f'  int h;\n  int i;\n  h = morv_mcp_connect("{sys.executable} {TOOL_SERVER} %s");\n'
    call = '  $t = morv_mcp_call(h, "%s", %s);\n  printf("%%s", isprint(morv_strlen($t), " ", morv_substr($t, 0, 20)));\n'
    echo = call % ("echo", '"{}"')
    asked = '{"jsonrpc":"2.0","id":2,"method":"tools/call","params":{"name":"length","arguments":{"a":""}}}\n'
    for mode, body, printed in (("long:10000000", echo + echo, "\n".join(["4095 " + "x" * 20] * 2)),
                                ("long:60000", echo, "4095 " + "x" * 20), ("half", echo + echo, "0 \n0 "),
                                ("garbage", echo, '30 {"name":"echo","argu'),
                                ("fine", '  $a = "x";\n  for (i = 0; i < 23; i++)\n  {\n    $a = isprint($a, $a);\n  }\n' +
                                 call % ("length", r'isprint("{\"a\":\"", $a, "\"}")'), f"7 {2**23 + len(asked)}")):
        check(f"tool server {mode}", run(connect % mode + body)[0], printed)


for test in (test_urls, test_headers, test_answers, test_slowness, test_certificates, test_addresses, test_tool_servers, test_silence):
    begun = time.monotonic()
    test()
    if os.environ.get("TEST_TIMES"):
        print(f"{test.__name__}: {time.monotonic() - begun:.1f} s")
sys.exit(program.close(program.outcomes))
