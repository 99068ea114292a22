"""http_server.py PORT [CERTIFICATE]: a server on a free port of 127.0.0.1 that answers what it is told to.

It connects to PORT of 127.0.0.1, where its master listens, and writes its own port as a line. Then it takes these commands, a line
each, until the master is gone, which ends it:

  answer PATH LENGTH FILL END DELAY   an answer for PATH ("*": all others): after DELAY milliseconds LENGTH bytes, which follow the
                line, and FILL bytes more, then END: close, keep (the connection), hold (nothing more, the connection stays) or
                reset. Several answers for a path are given one after the other; the last one stays. Writes "taken" as a line
  requests      writes the number of bytes as a line, and those of all requests, in the order of their arrival
  connections   writes the number of connections as a line
  full          writes the port of a socket as a line that is listened to but takes no connection any more

With CERTIFICATE, a file with a certificate and its key, it speaks TLS.
"""

import os
import socket
import struct
import sys
import threading
import time

PATTERN = bytes(range(256)) * 4096  # what bodies are filled with


class Answer:
    def __init__(self, data, fill, end, delay):
        self.data = data
        self.fill = fill
        self.end = end
        self.delay = delay


class Answers:
    def __init__(self):
        self.lock = threading.Lock()
        self.of_path = {}
        self.requests = []
        self.connections = 0

    def add(self, path, answer):
        with self.lock:
            self.of_path.setdefault(path, []).append(answer)

    def take(self, path, request):
        with self.lock:
            self.requests.append(request)
            answers = self.of_path.get(path) or self.of_path.get("*")
            if not answers:
                return Answer(b"HTTP/1.1 500 No answer\r\nContent-Length: 0\r\n\r\n", 0, "close", 0)
            return answers.pop(0) if len(answers) > 1 else answers[0]


ANSWERS = Answers()
HELD = []


def listen(backlog):
    listener = socket.socket()
    listener.bind(("127.0.0.1", 0))
    listener.listen(backlog)
    return listener, listener.getsockname()[1]


def read_request(stream):
    """The bytes of one request with its body; none at the end of the connection."""
    request = b""
    length = 0
    while not request.endswith(b"\r\n\r\n"):
        line = stream.readline()
        if not line:
            return b""
        request += line
        if line.lower().startswith(b"content-length:"):
            length = int(line.split(b":")[1].split(b";")[0])
    return request + stream.read(length)


def send(connection, answer):
    time.sleep(answer.delay / 1000)
    connection.sendall(answer.data)
    fill = answer.fill
    while fill > 0:
        part = PATTERN[:fill]
        connection.sendall(part)
        fill -= len(part)


def reset(connection):
    """A reset also takes away what the other side has not read yet, so that gets some time."""
    time.sleep(0.5)
    connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
    connection.close()


def close(connection, stream):
    """Waits for the other side: what it still sends would turn the end into a reset."""
    try:
        connection.shutdown(socket.SHUT_WR)
        connection.settimeout(1)
        while stream.read(65536):
            pass
    finally:
        connection.close()


def serve(connection, context):
    try:
        if context:
            connection = context.wrap_socket(connection, server_side=True)
        connection.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
        stream = connection.makefile("rb")
        while True:
            if stream.peek(1)[:1] == b"\x16":  # TLS, and this is no server for it
                connection.sendall(b"HTTP/1.1 400 Plain HTTP here\r\nContent-Length: 0\r\n\r\n")
                close(connection, stream)
                return
            request = read_request(stream)
            if not request:
                connection.close()
                return
            answer = ANSWERS.take(request.split(b" ", 2)[1].decode("latin-1"), request)
            send(connection, answer)
            if answer.end == "hold":
                HELD.append((connection, stream))
                return
            if answer.end == "reset":
                stream.close()
                reset(connection)
                return
            if answer.end == "close":
                close(connection, stream)
                return
    except OSError:
        connection.close()  # the client went away, or did not like the certificate


def accept(listener, context):
    while True:
        connection, _ = listener.accept()
        ANSWERS.connections += 1
        threading.Thread(target=serve, args=(connection, context), daemon=True).start()


def full_port():
    listener, port = listen(0)
    HELD.append(listener)
    for _ in range(3):
        connection = socket.socket()
        connection.setblocking(False)
        connection.connect_ex(("127.0.0.1", port))
        HELD.append(connection)
    return port


def obey(master, commands):
    for line in commands:
        words = line.decode("latin-1").split()
        if words[0] == "answer":
            data = commands.read(int(words[2]))
            ANSWERS.add(words[1], Answer(data, int(words[3]), words[4], int(words[5])))
            master.sendall(b"taken\n")
        elif words[0] == "requests":
            data = b"".join(ANSWERS.requests)
            master.sendall(b"%d\n" % len(data) + data)
        elif words[0] == "connections":
            master.sendall(b"%d\n" % ANSWERS.connections)
        elif words[0] == "full":
            master.sendall(b"%d\n" % full_port())


def main():
    context = None
    if len(sys.argv) > 2:
        import ssl

        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(sys.argv[2])
    listener, port = listen(64)
    master = socket.create_connection(("127.0.0.1", int(sys.argv[1])))
    threading.Thread(target=accept, args=(listener, context), daemon=True).start()
    master.sendall(b"%d\n" % port)
    try:
        obey(master, master.makefile("rb"))
    finally:
        os._exit(0)


main()
