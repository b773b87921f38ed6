// Who may come in to a rating service, and with what.
#include "server/http/gate.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace cwt {
namespace {

constexpr const char* kToken = "0123456789abcdef";

/// The problem of a request; empty when it may come in.
std::string Problem(const Gate& gate, const std::string& line, const std::string& fields) {
    const Head head = ReadHead(fmt::format("{} HTTP/1.1\r\n{}\r\n", line, fields));
    try {
        constexpr Route kPage = {"page", RouteKind::kPage};
        const Route* const route = FindRoute(head.path());
        gate.RequireAllowed(head, route == nullptr ? kPage : *route);
        return "";
    } catch (const BadRequest& problem) {
        return NameOf(problem.kind);
    }
}

TEST(Gate, AnOpenServiceAnswersToTheNamesOfThisMachineAlone) {
    const Gate gate({"127.0.0.1", 8080}, "");
    const Gate six({"::1", 8080}, "");
    for (const char* host :
         {"localhost", "LocalHost:8080", "127.0.0.1", "127.0.0.1:8080", "[::1]", "[::1]:8080"}) {
        EXPECT_EQ(Problem(gate, "GET /healthz", fmt::format("Host: {}\r\n", host)), "") << host;
        EXPECT_EQ(Problem(six, "GET /", fmt::format("Host: {}\r\n", host)), "") << host;
    }
    for (const char* host : {"evil.example", "localhost.evil.example", "evil.localhost",
                             "127.0.0.1.evil.example", "127.0.0.2", "::1", "[::1", "[::2]",
                             "[::1]evil.example", "localhost]:80", ":8080", "localhost."}) {
        EXPECT_EQ(Problem(gate, "GET /healthz", fmt::format("Host: {}\r\n", host)), "wrong-host")
            << host;
        EXPECT_EQ(Problem(gate, "GET /", fmt::format("Host: {}\r\n", host)), "wrong-host") << host;
    }
    // Behind a token, or for others, proxies have names of their own.
    EXPECT_EQ(Problem(Gate({"127.0.0.1", 80}, kToken), "GET /healthz", "Host: a\r\n"), "");
    EXPECT_EQ(Problem(Gate({"0.0.0.0", 80}, ""), "GET /healthz", "Host: a\r\n"), "");
}

TEST(Gate, PagesOfOtherHostsAskNothing) {
    const Gate gate({"127.0.0.1", 80}, "");
    const std::pair<const char*, const char*> cases[] = {
        {"", ""},
        {"Origin: http://localhost:80\r\n", ""},
        {"Origin: HTTPS://LOCALHOST:80\r\n", ""},
        {"Origin: http://localhost\r\n", "forbidden"},
        {"Origin: http://localhost:81\r\n", "forbidden"},
        {"Origin: http://localhost:80.evil\r\n", "forbidden"},
        {"Origin: ftp://localhost:80\r\n", "forbidden"},
        {"Origin: localhost:80\r\n", "forbidden"},
        {"Origin: null\r\n", "forbidden"},
        {"Sec-Fetch-Site: same-origin\r\n", ""},
        {"Sec-Fetch-Site: none\r\n", ""},
        {"Sec-Fetch-Site: cross-site\r\n", "forbidden"},
        {"Origin: http://localhost:80\r\nSec-Fetch-Site: cross-site\r\n", ""},
    };
    for (const auto& [fields, problem] : cases) {
        const std::string all = fmt::format("Host: localhost:80\r\n{}", fields);
        EXPECT_EQ(Problem(gate, "GET /v1/set", all), problem) << fields;
        EXPECT_EQ(Problem(gate, "POST /v1/rate", all), problem) << fields;
        EXPECT_EQ(Problem(gate, "GET /", all), "") << "a link elsewhere may lead to the page";
    }
}

TEST(Gate, ATokenIsWantedWholeAndOfAllButThePages) {
    const Gate gate({"0.0.0.0", 80}, kToken);
    const std::pair<std::string, bool> cases[] = {
        {"Bearer 0123456789abcdef", true},
        {"BEARER 0123456789abcdef", true},
        {"", false},
        {"Bearer", false},
        {"Bearer  0123456789abcdef", false},
        {"0123456789abcdef", false},
        {"Basic 0123456789abcdef", false},
        {"Bearer 0123456789abcde", false},
        {"Bearer 0", false},
        {"Bearer 1123456789abcdef", false},
        {"Bearer 0123456789abcdeg", false},
        {"Bearer 0123456789ABCDEF", false},
        {"Bearer 0123456789abcdef0", false},
        {"Bearer 0123456789abcdef0123456789abcdef", false},
    };
    for (const auto& [token, is_in] : cases) {
        const std::string fields = fmt::format("Host: a\r\nAuthorization: {}\r\n", token);
        for (const char* line : {"GET /v1/set", "POST /v1/rate", "POST /v1/batch", "GET /metrics",
                                 "HEAD /v1/profiles/a", "GET /openapi.json"}) {
            EXPECT_EQ(Problem(gate, line, fields), is_in ? "" : "unauthorized") << line << token;
        }
        for (const char* line : {"GET /", "GET /healthz", "HEAD /readyz"}) {
            EXPECT_EQ(Problem(gate, line, fields), "") << line;
        }
    }
    EXPECT_EQ(Problem(gate, "DELETE /v1/set", "Host: a\r\n"), "unauthorized")
        << "nothing is told to who is not in";
}

TEST(Gate, AnAddressTakesItsMethodsAndTypes) {
    const Gate gate({"127.0.0.1", 80}, "");
    const struct {
        const char *line, *type, *problem;
    } cases[] = {
        {"GET /v1/set", "", ""},
        {"HEAD /v1/set", "text/xml", ""},
        {"POST /v1/set", "", "wrong-method"},
        {"PUT /healthz", "", "wrong-method"},
        {"OPTIONS /v1/rate", "", "wrong-method"},
        {"GET /v1/rate", "", "wrong-method"},
        {"HEAD /v1/batch", "", "wrong-method"},
        {"PATCH /v1/check", "", "wrong-method"},
        {"POST /v1/rate", "", ""},
        {"POST /v1/check", "Application/JSON", ""},
        {"POST /v1/curve", "application/json; charset=UTF-8", ""},
        {"POST /v1/rate", "application/json;charset=utf-16", "wrong-type"},
        {"POST /v1/rate", "application/json; charset=\"utf-8\"", ""},
        {"POST /v1/rate", "application/x-www-form-urlencoded", ""},
        {"POST /v1/rate", "application/jsonx", "wrong-type"},
        {"POST /v1/rate", "text/csv", "wrong-type"},
        {"POST /v1/batch", "text/csv; header=present", ""},
        {"POST /v1/batch", "application/x-ndjson", ""},
        {"POST /v1/batch", "", ""},
        {"POST /v1/batch", "application/json", "wrong-type"},
        {"POST /v1/batch", "application/x-www-form-urlencoded", "wrong-type"},
        {"POST /v1/batch", "text/csv; charset=windows-1252", "wrong-type"},
    };
    for (const auto& [line, type, problem] : cases) {
        const std::string field = fmt::format("Host: localhost\r\nContent-Type: {}\r\n", type);
        EXPECT_EQ(Problem(gate, line, field), problem) << line << " " << type;
    }
}

}  // namespace
}  // namespace cwt
