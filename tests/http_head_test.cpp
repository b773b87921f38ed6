// The head of a request: where a proxy in front could read it in another way, what is behind would
// be taken for a request of somebody else.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "server/http/head.h"
#include "server/http/route.h"

namespace cwt {
namespace {

using namespace std::string_literals;

const std::string kHost = "Host: a\r\n";

/// The request as it was understood, or the name of the problem.
std::string Understood(const std::string& text) {
    try {
        const Head head = ReadHead(text);
        return fmt::format("{} {} {}{}", head.method, head.path(),
                           head.is_chunked ? "chunked" : std::to_string(head.length),
                           head.ends_connection ? " last" : "");
    } catch (const BadRequest& problem) {
        return NameOf(problem.kind);
    }
}

TEST(HttpHead, TheRequestLineHasOneForm) {
    const std::pair<std::string, const char*> lines[] = {
        {"GET / HTTP/1.1", "GET / 0"},
        {"HEAD /v1/set?a=b?c HTTP/1.1", "HEAD /v1/set 0"},
        {"GET / HTTP/1.0", "GET / 0 last"},
        {"get / HTTP/1.1", "bad-request"},
        {"TRACE / HTTP/1.1", "bad-request"},
        {"CONNECT / HTTP/1.1", "bad-request"},
        {" / HTTP/1.1", "bad-request"},
        {"GET / HTTP/1.2", "bad-request"},
        {"GET / HTTP/1.1 ", "bad-request"},
        {"GET /  HTTP/1.1", "bad-request"},
        {"GET /a b HTTP/1.1", "bad-request"},
        {"GET /a\tb HTTP/1.1", "bad-request"},
        {"GET /a\x7f HTTP/1.1", "bad-request"},
        {"GET /\xC3\xA4 HTTP/1.1", "bad-request"},
        {"GET * HTTP/1.1", "bad-request"},
        {"GET a HTTP/1.1", "bad-request"},
        {"GET /", "bad-request"},
        {"GET", "bad-request"},
    };
    for (const auto& [line, understood] : lines) {
        EXPECT_EQ(Understood(line + "\r\n" + kHost + "\r\n"), understood) << line;
    }
    EXPECT_EQ(Understood("GET / HTTP/1.0\r\n\r\n"), "GET / 0 last");
    EXPECT_EQ(Understood("GET / HTTP/1.1\r\n\r\n"), "bad-request") << "no host";
    EXPECT_EQ(Understood("GET / HTTP/1.1\r\nHost: \r\n\r\n"), "bad-request") << "no host";
}

TEST(HttpHead, TheLengthOfABodyIsToldInOneWayOrRefused) {
    const struct {
        const char *method, *fields, *understood;
    } cases[] = {
        {"POST", "", "POST / 0"},
        {"POST", "Content-Length: 0\r\n", "POST / 0"},
        {"POST", "content-length:\t12 \r\n", "POST / 12"},
        {"POST", "Content-Length: 4294967295\r\n", "POST / 4294967295"},
        {"POST", "Content-Length: 18446744073709551616\r\n", "bad-request"},
        {"POST", "Content-Length: -1\r\n", "bad-request"},
        {"POST", "Content-Length: +1\r\n", "bad-request"},
        {"POST", "Content-Length: 0x1\r\n", "bad-request"},
        {"POST", "Content-Length: 1 1\r\n", "bad-request"},
        {"POST", "Content-Length: 1,1\r\n", "bad-request"},
        {"POST", "Content-Length: 1.0\r\n", "bad-request"},
        {"POST", "Content-Length:\r\n", "bad-request"},
        {"POST", "Transfer-Encoding: chunked\r\n", "POST / chunked"},
        {"POST", "transfer-encoding: Chunked\r\n", "POST / chunked"},
        {"POST", "Transfer-Encoding:\r\n", "bad-request"},
        {"POST", "Transfer-Encoding: identity\r\n", "bad-request"},
        {"POST", "Transfer-Encoding: chunked, chunked\r\n", "bad-request"},
        {"POST", "Transfer-Encoding: gzip, chunked\r\n", "bad-request"},
        {"POST", "Transfer-Encoding: chunked;a=b\r\n", "bad-request"},
        {"POST", "Transfer-Encoding: \vchunked\r\n", "bad-request"},
        {"POST", "Transfer-Encoding: chunked\r\nContent-Length: 0\r\n", "bad-request"},
        {"POST", "Content-Length: 9\r\nTransfer-Encoding: chunked\r\n", "bad-request"},
        {"POST", "Content-Length:\r\nTransfer-Encoding: chunked\r\n", "bad-request"},
        {"GET", "Content-Length: 0\r\n", "GET / 0"},
        {"GET", "Content-Length: 1\r\n", "bad-request"},
        {"HEAD", "Transfer-Encoding: chunked\r\n", "bad-request"},
        {"DELETE", "Content-Length: 1\r\n", "DELETE / 1"},
        {"POST", "Content-Encoding: identity\r\n", "POST / 0"},
        {"POST", "Content-Encoding: gzip\r\n", "wrong-type"},
        {"POST", "Expect: 100-Continue\r\n", "POST / 0"},
        {"POST", "Expect: 200-ok\r\n", "bad-request"},
        {"POST", "Connection: keep-alive\r\n", "POST / 0"},
        {"POST", "Connection: Close\r\n", "POST / 0 last"},
        {"POST", "Connection: TE ,\tclose\r\n", "POST / 0 last"},
        {"POST", "Connection: TE\r\nConnection: close\r\n", "POST / 0 last"},
        {"POST", "Connection: closed\r\n", "POST / 0"},
    };
    for (const auto& [method, fields, understood] : cases) {
        EXPECT_EQ(Understood(fmt::format("{} / HTTP/1.1\r\n{}{}\r\n", method, kHost, fields)),
                  understood)
            << fields;
    }
    EXPECT_EQ(Understood("POST / HTTP/1.0\r\nTransfer-Encoding: chunked\r\n\r\n"), "bad-request");
    for (const std::string name :
         {"Host: a", "Content-Length: 1", "Content-Type: a", "Content-Encoding: identity",
          "Authorization: a", "Origin: a", "Expect: 100-continue", "Transfer-Encoding: chunked"}) {
        const std::string begin = "POST / HTTP/1.1\r\n" + kHost;
        if (name != "Host: a") {
            EXPECT_NE(Understood(begin + name + "\r\n\r\n"), "bad-request") << name;
        }
        EXPECT_EQ(Understood(begin + name + "\r\n" + name + "\r\n\r\n"), "bad-request") << name;
    }
}

TEST(HttpHead, FieldsThatAProxyCouldReadOtherwiseAreRefused) {
    const std::string begin = "GET / HTTP/1.1\r\n" + kHost;
    for (const std::string& sound :
         {"A:b"s, "A: b\tc "s, "A:"s, "A: \xC3\xA4"s, "09AZaz.!#$%&'*+-^_`|~: b"s}) {
        EXPECT_EQ(Understood(begin + sound + "\r\n\r\n"), "GET / 0") << sound;
    }
    for (const std::string& wrong :
         {" A: b"s, "A : b"s, "A\t: b"s, "A"s, ": b"s, "A(: b"s, "\xC3\xA4: b"s, "A: \x01"s,
          "A: b\x7f"s, "A: b\rC: d"s, "A: b\nC: d"s, "A: b\0"s, "A: b\r\n c"s}) {
        EXPECT_EQ(Understood(begin + wrong + "\r\n\r\n"), "bad-request") << wrong;
    }
    constexpr std::size_t kLine = 8000, kFields = 100;
    const auto line = [&](std::size_t size) {
        return Understood(begin + "A: " + std::string(size - 3, 'b') + "\r\n\r\n");
    };
    EXPECT_EQ(line(kLine), "GET / 0");
    EXPECT_EQ(line(kLine + 1), "headers-too-large");
    std::string fields = begin;
    for (std::size_t count = 1; count < kFields; ++count) fields += "A: b\r\n";
    EXPECT_EQ(Understood(fields + "\r\n"), "GET / 0");
    EXPECT_EQ(Understood(fields + "A: b\r\n\r\n"), "headers-too-large");
}

TEST(HttpHead, TheLibraryIsToldNothingThatItWouldActOnUnasked) {
    const Head head =
        ReadHead("POST /v1/rate?explain=1 HTTP/1.1\r\n" + kHost +
                 "Range: bytes=0-1\r\nAccept-Encoding: gzip\r\nUpgrade: h2c\r\nTrailer: a\r\n"
                 "EXPECT: 100-continue\r\nContent-Type: text/csv\r\nConnection: close\r\n"
                 "Content-Length:  7\r\n\r\n");
    EXPECT_EQ(head.ForLibrary(),
              "POST /v1/rate?explain=1 HTTP/1.1\r\ncontent-type: text/csv\r\ncontent-length: 7\r\n"
              "expect: 100-continue\r\nconnection: close\r\n\r\n");
    EXPECT_EQ(ReadHead("POST / HTTP/1.0\r\nExpect: 100-continue\r\n\r\n").ForLibrary(),
              "POST / HTTP/1.0\r\nconnection: close\r\n\r\n");
    EXPECT_EQ(head.Find("upgrade"), "h2c");
    EXPECT_EQ(head.Find("up"), "");
}

TEST(HttpHead, AnAddressLeadsToOneRoute) {
    const std::pair<const char*, const char*> cases[] = {
        {"/v1/rate", "/v1/rate"},
        {"/v1/profiles", "/v1/profiles"},
        {"/v1/profiles/Two words", "/v1/profiles/{name}"},
        {"/v1/states/{code}", "/v1/states/{code}"},
        {"/v1/profiles/", ""},
        {"/v1/profiles/a/b", ""},
        {"/v1/states", ""},
        {"/v1/Rate", ""},
        {"/v1/rate/", ""},
        {"/v1/rate/x", ""},
        {"/", ""},
        {"", ""},
    };
    for (const auto& [path, route] : cases) {
        const Route* const found = FindRoute(path);
        EXPECT_EQ(found == nullptr ? "" : found->path, route) << path;
    }
    const Route& state = *FindRoute("/v1/states/30303");
    EXPECT_EQ(state.part_name(), "code");
    EXPECT_EQ(state.PartOf("/v1/states/30303"), "30303");
    EXPECT_EQ(FindRoute("/v1/set")->part_name(), "");
    for (const char* open : {"/healthz", "/readyz"}) EXPECT_TRUE(FindRoute(open)->is_public());
    for (const char* closed : {"/metrics", "/v1/set", "/v1/rate", "/v1/batch", "/openapi.json"}) {
        EXPECT_FALSE(FindRoute(closed)->is_public()) << closed;
    }
}

}  // namespace
}  // namespace cwt
