#!/usr/bin/python3
"""Ships sessions into a real ClickHouse server while senders, server and sessions end at random.
   ship_test.py LOGTOOL_EXE TESTS_WINDOWS_EXE
Skipped, with exit code 77, where the server cannot be had."""
import http.server, json, os, random, shutil, signal, socket, ssl, struct, subprocess, sys, tempfile, threading, time
import urllib.parse, urllib.request

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
ENGINE = ROOT + "/tools/engine.sh"
LONG = "QM_TEST_LONG" in os.environ
SEED = int(os.environ.get("QM_TEST_SEED", random.randrange(10**6) if LONG else 1))
rng = random.Random(SEED)
os.environ.update(LOGTOOL_EXE=os.path.abspath(sys.argv[1]), QM_ENGINE_USER="fleet", QM_ENGINE_PASSWORD="secret")


class Server:
    def __init__(self, folder):
        self.folder = folder
        self.start()
        self.url = subprocess.run([ENGINE, "wait", folder], check=True, stdout=subprocess.PIPE, text=True).stdout.strip()

    def start(self):
        self.process = subprocess.Popen([ENGINE, "serve", self.folder])

    def kill(self):
        self.process.kill()
        self.process.wait()

    def again(self):
        self.start()
        subprocess.run([ENGINE, "wait", self.folder], check=True, stdout=subprocess.DEVNULL)

    def ask(self, sql, **parameters):
        address = self.url + "/?" + urllib.parse.urlencode(parameters)
        with urllib.request.urlopen(address, sql.encode()) as answer:
            return answer.read()


def shown(text):
    """What the table has of a text: UTF-8, or else the code page."""
    try:
        return text.decode()
    except UnicodeDecodeError:
        return text.decode("cp1252")


class Session:
    """A session that this test writes by itself, as docs/file-format.md describes it, and its rows."""
    TEXTS = [b"plain", "größe 日本".encode(), b"gr\xf6\xdfe", b"a\0b\0", b"it's \\' \"x\" `y` \\n %s {z}", b"\t\r", b"",
             b"'; DROP TABLE log_rows; --", b"\xc3\x28 \xed\xa0\x80 \xff",
             "ä".encode() * 1000]

    def __init__(self, folder):
        self.folder = folder
        os.makedirs(folder, exist_ok=True)
        self.begin()

    def begin(self):
        for name in os.listdir(self.folder):
            os.remove(self.folder + "/" + name)
        self.number, self.rows, self.sizes, self.mark = 0, {}, {}, rng.random()
        open(f"{self.folder}/Log.DAT", "wb").close()

    def add(self, log, text):
        self.number += 1
        header = rng.randrange(20) == 0
        depth, kind = (1, rng.choice([0, 2])) if header else (0, 0)
        with open(f"{self.folder}/Log.DAT", "r+b") as file:
            file.write(struct.pack("<IBxxx", self.number, 0))
        size = self.sizes.get(log, 0)
        with open(f"{self.folder}/{log}.ROW", "ab") as file:
            file.write(struct.pack("<IBxxxIBxxxI", size, depth, kind, header, self.number))
        with open(f"{self.folder}/{log}.LOG", "ab") as file:
            file.write(text + b"\n")
        self.sizes[log] = size + len(text) + 1
        self.rows[self.number, log] = [kind, int(header), len(text), shown(text)]

    def grow(self, count):
        for _ in range(count):
            text = f"{self.number} {self.mark} ".encode() + rng.choice(self.TEXTS)
            if rng.randrange(2000) == 0:
                text = text[:1] * (1 << 20) + text
            self.add(rng.choice(["Main", "Run", "SQL"]), text)


def sender(session, *arguments):
    for option, value in ("--session", "S"), ("--machine", "m"):
        arguments += (option, value) if option not in arguments else ()
    return subprocess.Popen([ROOT + "/tools/logtool.sh", "--folder", session.folder, "ship", *arguments],
                            stdout=subprocess.PIPE, stderr=subprocess.STDOUT)


def ship(session, *arguments, code=0):
    process = sender(session, *arguments)
    told = process.communicate(timeout=120)[0].decode().replace("\r", "")
    assert process.returncode == code, (process.returncode, told)
    return told


def in_engine(server, table="log_rows", session="S", machine="m"):
    quoted = lambda text: "unhex('" + text.encode().hex() + "')"
    answer = server.ask(f"SELECT number, log, kind, header, length, text FROM {table} WHERE machine = {quoted(machine)}"
                        f" AND session = {quoted(session)} ORDER BY number, log, length DESC LIMIT 1 BY number, log"
                        " FORMAT JSONCompact")
    return {(row[0], row[1]): row[2:] for row in json.loads(answer)["data"]}


def check_rows(server, session, rows):
    found = in_engine(server, session=session)
    for key in sorted(rows.keys() | found.keys()):
        assert found.get(key) == rows.get(key), (session, key, found.get(key), rows.get(key), len(found), len(rows),
                                                 server.ask("SELECT session, count() FROM log_rows GROUP BY session"))


def check_kills(server, session):
    kills = 20 if LONG else 5
    senders, past = [], {}
    ship(session, "--to", server.url, "--create")
    for count in range(kills):
        senders.append(sender(session, "--to", server.url, "--follow"))
        for _ in range(rng.randrange(1, 5)):
            session.grow(rng.randrange(3000))
            time.sleep(rng.random() / 3)
        if rng.randrange(2):
            server.kill()
            time.sleep(rng.random() / 2)
            server.again()
        if rng.randrange(3) or len(senders) > 2:
            senders.pop(rng.randrange(len(senders))).kill()
        if count == kills // 2:  # what has been shipped of a session stays; another one begins while it is followed
            ship(session, "--to", server.url)
            past["S"] = session.rows
            session.begin()
            session.grow(2000)
            time.sleep(1)
    for process in senders:
        process.kill()
    ship(session, "--to", server.url)
    assert ship(session, "--to", server.url).endswith("logtool: 0 rows shipped\n")
    check_rows(server, "S-2", session.rows)
    check_rows(server, "S", past["S"])
    stored = int(server.ask("SELECT count() FROM log_rows"))
    print(f"{kills} kills: {len(session.rows) + len(past['S'])} rows, {stored} before they are merged")


def check_names(server, folder):
    """Names reach the engine as they are."""
    odd = "a'b\\ \" `c` ); -- ä\n\t%"
    session = Session(folder + "/odd")
    session.grow(100)
    session.add("It's `odd`", b"x")
    for _ in range(2):
        ship(session, "--to", server.url, "--create", "--table", "od`d 't", "--session", odd, "--machine", odd)
    assert in_engine(server, "`od\\`d 't`", odd, odd) == session.rows
    assert int(server.ask("SELECT count() FROM `od\\`d 't`")) == len(session.rows)


def check_messages(server, session):
    """What "messages --from" shows, with what the engine and what the tool leaves out."""
    words = {0: "Plain", 2: "Error"}
    shown = lambda text: text.rstrip("\r\n").replace("\0", " ")
    rows = [[log, words[row[0]], shown(row[3])] for (_, log), row in sorted(session.rows.items())]
    asked = {(): lambda row: True,
             ("--level", "error"): lambda row: row[1] == "Error",
             ("--contain", "body=s \\' \"x\" `y`"): lambda row: "s \\' \"x\" `y`" in row[2],
             ("--not-contain", "body='; DROP TABLE log_rows; --"): lambda row: "DROP" not in row[2],
             ("--contain", "body=PLAIN", "-i", "--contain", "topic=sq"): lambda row: "plain" in row[2] and row[0] == "SQL",
             ("--contain", "body=a b"): lambda row: "a b" in row[2],
             ("--not-contain", "body=a b"): lambda row: "a b" not in row[2],
             ("--contain", "body=größe 日本", "--level", "info"): lambda row: "größe 日本" in row[2]}
    for options, passes in asked.items():
        told = subprocess.run([ROOT + "/tools/logtool.sh", "messages", "--from", server.url + "/log_rows?session=S-2",
                               "--fields", "topic,level,body", "--json", *options], stdout=subprocess.PIPE).stdout
        found = [list(json.loads(line).values()) for line in told.splitlines()]
        wanted = [row for row in rows if passes(row)]
        assert found == wanted and wanted, (options, len(found), len(wanted), [pair for pair in zip(found, wanted) if pair[0] != pair[1]][:2])


def check_shards(server, session):
    """The statements of docs/log_rows.sql for several servers; one plays two of them."""
    sql = open(ROOT + "/docs/log_rows.sql").read()
    table, distributed = [statement for statement in sql.split(";\n") if "CREATE" in statement]
    for shard in ("shard1", "shard2"):
        server.ask("CREATE DATABASE " + shard)
        server.ask(table, database=shard)
    server.ask(distributed)
    for name in "ABCDE":
        ship(session, "--to", server.url + "/fleet_rows", "--session", name)
        assert in_engine(server, "fleet_rows", name) == session.rows
    shares = [int(server.ask(f"SELECT uniqExact(session) FROM {shard}.log_rows")) for shard in ("shard1", "shard2")]
    assert sum(shares) == 5 and min(shares) > 0, shares


def check_errors(server, session):
    told = ship(session, "--to", server.url, "--table", "none", code=2)
    assert "Table default.none doesn't exist" in told, told
    os.environ["QM_ENGINE_PASSWORD"] = "wrong"
    told = ship(session, "--to", server.url, code=2)
    os.environ["QM_ENGINE_PASSWORD"] = "secret"
    assert "Wrong password for user fleet" in told and "wrong\n" not in told, told
    answers = {b"<html>hello</html>": "as no engine does: status 200: <html>hello</html>",
               b'{"data":[[1],': "as no engine does", b'{"data":[["x","y","z"]]}': "no number: y"}
    for answer, words in answers.items():
        class Handler(http.server.BaseHTTPRequestHandler):
            def do_POST(self):
                self.send_response(200)
                self.end_headers()
                self.wfile.write(answer if b"min" in self.path.encode() or b"data" not in answer or b"y" not in answer
                                 else b'{"data":[[1]]}' if "-2" not in self.path else b'{"data":[]}')
            log_message = lambda *_: None
        with http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler) as other:
            threading.Thread(target=other.serve_forever, daemon=True).start()
            told = ship(session, "--to", f"http://127.0.0.1:{other.server_port}", code=2)
            other.shutdown()
        assert words in told, told


def wait_for(process, words):
    told = b""
    while words not in told:
        piece = process.stdout.readline()
        assert piece, told
        told += piece


def check_no_server(session):
    with socket.socket() as taken:
        taken.bind(("127.0.0.1", 0))
        process = sender(session, "--to", f"http://127.0.0.1:{taken.getsockname()[1]}")
        wait_for(process, b"nothing listens there, trying again in 1 s")
        process.kill()


def check_untrusted(folder, session):
    """A server whose certificate nobody vouches for gets no request, and so no password."""
    if not shutil.which("openssl"):
        print("There is no openssl: no https")
        return
    pem, received = folder + "/self.pem", []
    subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-subj", "/CN=localhost", "-keyout", pem,
                    "-out", pem + ".crt"], check=True, stderr=subprocess.DEVNULL)
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(pem + ".crt", pem)
    with socket.create_server(("127.0.0.1", 0)) as listening:
        def serve():
            try:
                with context.wrap_socket(listening.accept()[0], server_side=True) as connection:
                    received.append(connection.recv(1000))
            except OSError:
                pass  # given up within the handshake, or after it
        thread = threading.Thread(target=serve)
        thread.start()
        told = ship(session, "--to", f"https://localhost:{listening.getsockname()[1]}", code=2)
        thread.join()
    assert "a certificate that this system does not trust" in told and not b"".join(received), (told, received)


def check_full_disk(folder, session):
    disk = folder + "/disk"
    os.mkdir(disk)
    if subprocess.run(["mount", "-t", "tmpfs", "-o", "size=24m", "tmpfs", disk], stderr=subprocess.DEVNULL).returncode:
        print("This user may not mount a file system: no full disk")
        return
    server = None
    try:
        server = Server(disk + "/engine")
        ship(session, "--to", server.url, "--create")
        with open(disk + "/filler", "wb", buffering=0) as filler:
            try:
                while filler.write(b"x" * 4096) == 4096:
                    pass
            except OSError:
                pass
        session.grow(3000)
        process = sender(session, "--to", server.url)
        wait_for(process, b", trying again in ")
        os.remove(disk + "/filler")
        process.communicate(timeout=60)
        assert process.returncode == 0
        assert in_engine(server) == session.rows
    finally:
        if server:
            server.kill()
        subprocess.run(["umount", "-l", disk], check=True)


def check_views(server, folder):
    """What LogDesk shows of a session in an engine, and that its window shows something."""
    done = subprocess.run([ROOT + "/tools/run-wine.sh", sys.argv[2], "--gtest_filter=WindowsRealEngineTest.*"],
                          env={**os.environ, "QM_ENGINE_URL": server.url, "QM_TEST_SEED": str(SEED)},
                          stdout=subprocess.PIPE, text=True)
    assert done.returncode == 0 and "[  PASSED  ] 1 test." in done.stdout, done.stdout[-3000:]

    picture = folder + "/picture.bmp"
    address = server.url.replace("http:", "clickhouse:") + "/log_rows?session=S-2"
    first, error = server.ask("SELECT min(number), minIf(number, kind = 2) FROM log_rows WHERE session = 'S-2'").split()

    def shot(steps):
        subprocess.run([ROOT + "/tools/run-wine.sh", os.path.dirname(sys.argv[1]) + "/LogDesk.exe", "--open", address,
                        "--screenshot", "Z:" + picture, "--steps", "size:800x400" + steps], check=True, timeout=60)
        with open(picture, "rb") as file:
            return file.read()
    pictures = [shot(",sort:body:desc,message:3,level:warning"), shot(",message:2,during,dark:on"), shot(",find-message:x"), shot("")]
    assert len(set(pictures)) == 4 and min(map(len, pictures)) > 800 * 400 * 3
    assert shot(",next-message-error") == shot(f",message:{int(error) - int(first) + 1}") not in pictures


def main():
    installed = subprocess.run([ENGINE, "install"]).returncode
    if installed:
        sys.exit(installed)
    print(f"QM_TEST_SEED={SEED}")
    folder = tempfile.mkdtemp(suffix=" Größe 日志")
    server = None
    try:
        server = Server(tempfile.mkdtemp(dir=folder))
        session = Session(folder + "/session")
        check_no_server(session)
        check_untrusted(folder, session)
        check_kills(server, session)
        check_messages(server, session)
        check_views(server, folder)
        check_names(server, folder)
        check_shards(server, session)
        check_errors(server, session)
        check_full_disk(folder, session)
    finally:
        if server:
            server.kill()
        shutil.rmtree(folder)


main()
