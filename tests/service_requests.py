"""Requests that are right or wrong by a hair, and the status that each is answered by."""


class Requests:
    """For a service at a port, with a shipment that it rates."""

    def __init__(self, port, good):
        host = f"Host: localhost:{port}\r\n".encode()
        get = b"GET /healthz HTTP/1.1\r\n" + host
        post = b"POST /v1/rate HTTP/1.1\r\n" + host
        rows = post.replace(b"rate", b"batch")
        chunked = post + b"Transfer-Encoding: chunked\r\n\r\n"
        size = lambda count: b"Content-Length: %d\r\n\r\n" % count
        whole = b"%x\r\n%s\r\n0\r\n\r\n" % (len(good), good)
        self.cases = (
                (200, get + b"\r\n"), (200, b"\r\n" + get + b"\r\n"), (200, get[:9], get[9:] + b"\r\n"),
                (200, post + size(len(good)) + good), (200, chunked + whole),
                (200, chunked, whole[:9], whole[9:]), (200, b"GET /healthz HTTP/1.0\r\n\r\n"),
                (100, post + b"Expect: 100-continue\r\n" + size(len(good)), good),
                (400, post + size(2) + b"[]"), (400, post + size(3) + b"{\"a"), (400, post + b"\r\n"),
                (400, post + size(9) + b"cut"), (400, post + size(4) + b"\xff\xfe{}"),
                (400, chunked + b"5\r\nab"), (400, chunked + b"-1\r\n"), (400, chunked + b"0x2\r\n{}\r\n"),
                (400, chunked + b"2;a=b\r\n{}\r\n0\r\n\r\n"), (400, chunked + b"2\r\n{}0\r\n\r\n"),
                (413, chunked + b"fffffffffffffffff\r\n"), (413, chunked + b"ffffffff\r\n"),
                (400, chunked + b"2\n{}\n0\n\n"), (400, chunked + b"2\r\n{}\r\n0\r\nA: b\r\n\r\n"),
                (400, post + b"Content-Length: 2\r\n" + size(2) + b"{}"),
                (400, post + b"Content-Length: 2\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n\r\n"),
                (400, post + b"Content-Length: +2\r\n\r\n{}"), (400, post + b"Content-Length: \r\n\r\n"),
                (400, post + b"Content-Length: 2, 2\r\n\r\n{}"),
                (400, post + b"Content-Length : 2\r\n\r\n{}"),
                (400, post + b"Content-Length: 99999999999999999999\r\n\r\n"),
                (400, post + b"Transfer-Encoding: gzip, chunked\r\n\r\n"),
                (400, post + b"Transfer-Encoding: chunked\r\nTransfer-Encoding: x\r\n\r\n"),
                (400, post.replace(b"1.1", b"1.0") + b"Transfer-Encoding: chunked\r\n\r\n"),
                (400, get + b"A: b\r\n folded\r\n\r\n"), (400, get + b"A: b\nC: d\r\n\r\n"),
                (400, get + b"A: b\rC: d\r\n\r\n"), (400, get + b"A: \0\r\n\r\n"),
                (400, get + b": b\r\n\r\n"), (400, get + b"no colon\r\n\r\n"), (400, get + host + b"\r\n"),
                (400, b"GET /healthz HTTP/1.1\r\n\r\n"), (400, b"GET  /healthz HTTP/1.1\r\n\r\n"),
                (400, b"GET /healthz HTTP/2.0\r\n\r\n"), (400, b"GET http://a/ HTTP/1.1\r\n" + host + b"\r\n"),
                (400, b"BREW /healthz HTTP/1.1\r\n" + host + b"\r\n"), (400, b"\x16\x03\x01\x02\x00\r\n\r\n"),
                (400, get + size(3) + b"abc"), (400, get + b"Expect: tea\r\n\r\n"),
                (400, get.replace(b"healthz", b"v1/classes?x=1") + b"\r\n"),
                (400, post.replace(b"rate", b"rate?explain=1&explain=0") + size(2) + b"{}"),
                (400, post.replace(b"rate", b"rate?explain=2") + size(len(good)) + good),
                (406, rows + b"Content-Type: text/csv\r\nAccept: text/html\r\n" + size(2) + b"{}"),
                (415, rows + b"Content-Type: application/x-www-form-urlencoded\r\n" + size(2) + b"{}"),
                (403, get + b"Sec-Fetch-Site: cross-site\r\n\r\n"),
                (404, get.replace(b"healthz", b"../etc/passwd") + b"\r\n"),
                (404, get.replace(b"healthz", b"v1/states/") + b"\r\n"),
                (404, get.replace(b"healthz", b"a" * 7900) + b"\r\n"),
                (405, post.replace(b"POST", b"DELETE") + size(2) + b"{}"),
                (405, post.replace(b"POST", b"GET") + b"\r\n"), (405, get.replace(b"GET", b"OPTIONS") + b"\r\n"),
                (413, post + size(1 << 21)), (413, rows + size((1 << 20) + 1)),
                (413, chunked + b"200000\r\n"), (415, post + b"Content-Encoding: gzip\r\n" + size(2) + b"{}"),
                (415, post + b"Content-Type: text/xml\r\n" + size(2) + b"{}"),
                (415, post + b"Content-Type: multipart/form-data; boundary=a\r\n" + size(2) + b"{}"),
                (415, post + b"Content-Type: application/json; charset=utf-16\r\n" + size(2) + b"{}"),
                (421, b"GET /healthz HTTP/1.1\r\nHost: evil.example\r\n\r\n"),
                (403, get + b"Origin: http://evil.example\r\n\r\n"), (403, get + b"Origin: null\r\n\r\n"),
                (200, get + b"Origin: http://localhost:%d\r\n\r\n" % port),
                (431, get + b"A: " + b"b" * 17000 + b"\r\n\r\n"), (431, get + b"A: b\r\n" * 150 + b"\r\n"))
        # What is behind a request is the next one, and what is in its body is none.
        self.four = get + b"\r\n" + post + size(len(good)) + good + chunked + whole + get + b"\r\n"
        inner = get + b"\r\n"
        self.one = post + size(len(inner)) + inner
