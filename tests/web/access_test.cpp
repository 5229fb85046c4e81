// Who gets in: every route of the table against every kind of Host, Origin, Sec-Fetch-Site and
// cookie.
#include "shells/web/access.h"

#include <gtest/gtest.h>

#include "shells/web/addresses.h"

namespace kelo::web {
namespace {

using Text = std::optional<std::string>;

struct Header {
  Text value;
  bool isGood;
};

const Access& access() {
  static const Access one(hostsOf("127.0.0.1"), 8123);
  return one;
}

std::string goodCookie() {
  const std::string set = access().setCookie();
  return set.substr(0, set.find(';'));
}

TEST(Access, TheWholeMatrix) {
  const std::vector<Header> hosts = {
      {"127.0.0.1:8123", true},
      {"localhost:8123", true},
      {"LocalHost:8123", true},
      {"[::1]:8123", true},
      {std::nullopt, false},
      {"", false},
      {"127.0.0.1", false},
      {"localhost", false},
      {"127.0.0.1:81", false},
      {"127.0.0.1:81234", false},
      {"evil.test:8123", false},
      {"evil.test", false},
      {"127.0.0.1.evil.test:8123", false},
      {"evil.test/127.0.0.1:8123", false},
      {"x@127.0.0.1:8123", false},
      {"127.0.0.1:8123 ", false},
      {"localhost:8123:8123", false},
      {"0.0.0.0:8123", false},
  };
  const std::string cookie = goodCookie(), name = cookie.substr(0, cookie.find('='));
  const std::vector<Header> cookies = {
      {cookie, true},
      {"a=b; " + cookie, true},
      {cookie + "; a=b", true},
      {std::nullopt, false},
      {"", false},
      {name + "=", false},
      {name, false},
      {cookie + "x", false},
      {cookie.substr(0, cookie.size() - 1), false},
      {"x" + cookie, false},
      {name + "=" + access().token().text(), false},
      {"kelo-81" + cookie.substr(name.size()), false},
      {"a=" + cookie, false},
  };
  const std::vector<Header> sites = {{std::nullopt, true}, {"same-origin", true}, {"none", true},
                                     {"same-site", false}, {"cross-site", false}, {"", false}};
  int64_t allowed = 0;
  for (const Route& route : kRoutes) {
    for (const Header& host : hosts) {
      const std::string own = "http://" + host.value.value_or("");
      const std::vector<Header> origins = {
          {own, true},
          {std::nullopt, false},
          {"", false},
          {"null", false},
          {"http://", false},
          {"https" + own.substr(4), false},
          {own + "/", false},
          {own + ".evil.test", false},
          {own.substr(7), false},
          {"http://evil.test", false},
          {"http://evil.test:8123", false},
          {"http://127.0.0.1:9", false},
          {"http://x@" + own.substr(7), false},
          {own + " " + own, false},
      };
      for (const Header& origin : origins) {
        for (const Header& site : sites) {
          for (const Header& shown : cookies) {
            RequestFacts facts;
            facts.method = std::string(route.methods.substr(0, route.methods.find(' ')));
            facts.target = route.path.empty() ? "/assets/app.js" : std::string(route.path);
            facts.host = host.value;
            facts.origin = origin.value;
            facts.fetchSite = site.value;
            facts.cookies = shown.value;
            if (!route.contentType.empty()) facts.contentType = std::string(route.contentType);
            const bool isAllowed = host.isGood && (!route.needsOrigin || (origin.isGood && site.isGood)) &&
                                   (!route.needsCookie || shown.isGood);
            const Access::Verdict verdict = access().judge(facts);
            ASSERT_EQ(verdict.route == &route, isAllowed)
                << facts.target << " | " << facts.host.value_or("-") << " | " << facts.origin.value_or("-") << " | "
                << facts.fetchSite.value_or("-") << " | " << facts.cookies.value_or("-");
            ASSERT_EQ(verdict.refusal == 0, isAllowed);
            allowed += isAllowed;
          }
        }
      }
    }
  }
  EXPECT_GT(allowed, 1000);
}

TEST(Access, RefusesByKind) {
  const struct {
    const char *method, *target, *origin, *contentType;
    int refusal;
  } kRows[] = {
      {"GET", "/", nullptr, nullptr, 0},
      {"HEAD", "/any/file?x=1", nullptr, nullptr, 0},
      {"POST", "/", "own", nullptr, 405},
      {"DELETE", "/session", "own", nullptr, 405},
      {"GET", "/token", "own", nullptr, 405},
      {"POST", "/token", "own", "application/json; charset=utf-8", 0},
      {"POST", "/token", "own", "text/plain", 415},
      {"POST", "/token", "own", "application/x-www-form-urlencoded", 415},
      {"POST", "/token", "own", nullptr, 415},
      {"POST", "/token", nullptr, "application/json", 403},
      {"GET", "/session", "own", nullptr, 401},
      {"GET", "/session?x", "own", nullptr, 401},
      {"GET", "http://localhost:8123/", nullptr, nullptr, 404},
      {"GET", "*", nullptr, nullptr, 404},
      {"GET ", "/", nullptr, nullptr, 405},
      {"", "/", nullptr, nullptr, 405},
  };
  for (const auto& row : kRows) {
    RequestFacts facts{row.method, row.target, "localhost:8123", {}, {}, {}, {}};
    if (row.origin != nullptr) facts.origin = "http://localhost:8123";
    if (row.contentType != nullptr) facts.contentType = row.contentType;
    EXPECT_EQ(access().judge(facts).refusal, row.refusal) << row.method << " " << row.target;
  }
}

TEST(Secret, IsLongAndNew) {
  const Secret one = Secret::random(), other = Secret::random();
  EXPECT_EQ(one.text().size(), 43u);
  EXPECT_NE(one.text(), other.text());
  EXPECT_TRUE(one.matches(one.text()));
  EXPECT_FALSE(one.matches(other.text()));
  EXPECT_FALSE(one.matches(""));
  EXPECT_EQ(one.text().find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_"),
            std::string::npos);
}

TEST(TryLimit, LetsGoOnAfterAWhile) {
  TryLimit limit;
  for (size_t k = 0; k < TryLimit::kTries; ++k) {
    EXPECT_TRUE(limit.allows(static_cast<double>(k)));
    limit.failed(static_cast<double>(k));
  }
  EXPECT_FALSE(limit.allows(TryLimit::kSeconds - 1));
  EXPECT_TRUE(limit.allows(TryLimit::kSeconds + 0.5));
}

TEST(Addresses, AreTheOnesListenedOn) {
  EXPECT_EQ(hostsOf("127.0.0.1").front(), "127.0.0.1");
  EXPECT_EQ(hostsOf("::1").front(), "[::1]");
  const std::vector<std::string> home = hostsOf("192.168.7.9");
  EXPECT_EQ(home.front(), "192.168.7.9");
  EXPECT_EQ(std::count(home.begin(), home.end(), "localhost"), 0);
  EXPECT_FALSE(isLoopback("0.0.0.0"));
}

}  // namespace
}  // namespace kelo::web
