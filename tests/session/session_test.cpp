// What no message may do: end the session, go without an answer, or touch what is outside the work
// directory.
#include "session/session.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <random>
#include <set>

#include "platform/native/whole_file.h"
#include "session/methods.h"
#include "places.h"
#include "test_session.h"

namespace kelo::session {
namespace {

namespace fs = std::filesystem;

/// A folder "work" with a few files, and outside of it what must stay as it is.
class SessionTest : public testing::Test {
 protected:
  void SetUp() override {
    root = fs::temp_directory_path() / ("kelo_session_" + std::to_string(testing::UnitTest::GetInstance()->random_seed()) +
                                        "_" + std::to_string(::getpid()));
    fs::remove_all(root);
    fs::create_directories(root / "work" / "sub");
    fs::create_directories(root / "outside");
    write(root / "work" / "a.m", "x = 1;\n");
    write(root / "work" / "sub" / "b.m", "y = 2;\n");
    write(root / "outside" / "secret.m", kSecret);
    write(root / "work_private.m", kSecret);
    fs::create_symlink(root / "outside", root / "work" / "link");
    fs::create_symlink(root / "outside" / "secret.m", root / "work" / "file_link.m");
  }
  void TearDown() override { fs::remove_all(root); }

  static void write(const fs::path& path, const std::string& text) { std::ofstream(path) << text; }

  std::string outside() const {
    std::string all;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
      const std::string path = entry.path().string();
      if (!path.starts_with((root / "work/").string())) all += path + " " + contentOf(path) + "\n";
    }
    return all;
  }
  static std::string contentOf(const std::string& path) {
    return platform::native::readWholeFile(path).value_or("(none)");
  }

  static constexpr const char* kSecret = "% unseen by others";
  fs::path root;
};

Json valueFor(const Parameter& parameter, const std::string& path) {
  switch (parameter.kind) {
    case Kind::text:
      return *parameter.choices == '\0' ? path : std::string(parameter.choices, strcspn(parameter.choices, "|"));
    case Kind::texts: return Json::array({path});
    case Kind::integer: return std::max<int64_t>(parameter.least, 0);
    case Kind::number: return 1.5;
    case Kind::truth: return true;
    case Kind::object: return Json::object();
  }
  return nullptr;
}

TEST_F(SessionTest, NoPathOfAnyMethodLeadsOutside) {
  const std::string before = outside();
  TestSession session((root / "work").string());
  const std::vector<std::string> attacks = {
      "..", "../outside", "../outside/secret.m", "%2e%2e/outside/secret.m", "a/../../outside/secret.m",
      "sub/../../outside/secret.m", "/etc/passwd", (root / "outside/secret.m").string(), "C:\\secret.m",
      std::string("a.m\0.txt", 8), std::string(300, 'a'), std::string(300, 'a') + ".m", "CON", "a.m.", "a.m ", ".",
      "./a.m", "sub//b.m", "../work_private.m", "_private.m", "link", "link/secret.m", "link/new", "file_link.m",
      ".hidden", "sub/.hidden.m", "~", "$HOME", "\n", "sub/", "secret", "\xf0\x9f\x98\x80"};
  for (const std::string& attack : attacks) {
    for (const Method& method : methods()) {
      if (std::string(method.name) == "console/run") continue;  // its text is a program
      Json params = Json::object();
      for (const Parameter& parameter : method.parameters) {
        if (parameter.isRequired) params[parameter.name] = valueFor(parameter, attack);
      }
      const std::string answer = session.call(method.name, params).dump();
      EXPECT_EQ(answer.find("unseen"), std::string::npos) << method.name << " " << attack;
      for (const Parameter& parameter : method.parameters) {  // and one attack among good values
        const std::string name = parameter.name;
        if (name == "path" || name == "folder" || name == "name") {
          Json others = params;
          for (auto& [key, value] : others.items())
            value = key == name ? Json(attack) : key == "folder" ? Json("") : Json("a.m");
          if (others.contains("paths")) others["paths"] = Json::array({"a.m"});
          EXPECT_EQ(session.call(method.name, others).dump().find("unseen"), std::string::npos) << method.name;
        }
      }
    }
  }
  EXPECT_EQ(outside(), before);
}

const char* const kSeeds[] = {
    R"({"jsonrpc":"2.0","id":1,"method":"console/run","params":{"text":"x = 1:3"}})",
    R"~({"jsonrpc":"2.0","id":"a","method":"console/run","params":{"text":"pause; disp('é')","folder":"sub"}})~",
    R"({"jsonrpc":"2.0","id":2,"method":"console/complete","params":{"text":"si","position":2}})",
    R"({"jsonrpc":"2.0","id":3,"method":"console/isComplete","params":{"text":"if [1, 2"}})",
    R"({"jsonrpc":"2.0","id":4,"method":"settings/set","params":{"numDigitIndex":1,"consoleCells":40}})",
    R"({"jsonrpc":"2.0","id":5,"method":"editor/highlight","params":{"text":"for k = 1:3 % '\u20ac'\nend"}})",
    R"({"jsonrpc":"2.0","id":6,"method":"editor/indent","params":{"text":"if x\ny\nend","start":1,"end":8}})",
    R"({"jsonrpc":"2.0","id":7,"method":"files/write","params":{"path":"a.m","text":"1","revision":"0"}})",
    R"({"jsonrpc":"2.0","id":8,"method":"files/import","params":{"folder":"","name":"i.txt","base64":"QUJD"}})",
    R"({"jsonrpc":"2.0","id":9,"method":"files/search","params":{"text":"x"}})",
    R"({"jsonrpc":"2.0","id":10,"method":"workspace/show","params":{"name":"x"}})",
    R"({"jsonrpc":"2.0","id":11,"method":"keyboard/press","params":{"keyboardType":"alpha","capLocked":false,"key":"a","tap":"long"}})",
    R"({"jsonrpc":"2.0","id":12,"method":"docs/page","params":{"relativePath":"a.html","style":"auto","textSize":100}})",
};

/// Changes, drops, doubles or adds a few bytes.
std::string mutated(std::string text, std::mt19937& random) {
  const auto below = [&](size_t n) { return static_cast<size_t>(random() % std::max<size_t>(n, 1)); };
  for (size_t k = below(4) + 1; k > 0; --k) {
    const size_t at = below(text.size());
    switch (random() % 5) {
      case 0: text[at] = static_cast<char>(random()); break;
      case 1: text.erase(at, below(12)); break;
      case 2: text.insert(at, text.substr(below(text.size()), below(40))); break;
      case 3: text.insert(at, 1, "{}[]\",:0-e\\u\n"[below(13)]); break;
      default: text.resize(at); break;
    }
    if (text.empty()) text = "{";
  }
  return text;
}

TEST_F(SessionTest, EveryMessageIsAnsweredOnceWhateverItHolds) {
  const std::string before = outside();
  TestSession session((root / "work").string());
  const unsigned seed = std::random_device{}();
  std::mt19937 random(seed);
  for (int k = 0; k < 10'000; ++k) {
    std::string message;
    if (k % 10 == 0) {
      for (size_t length = random() % 100; length > 0; --length) message += static_cast<char>(random());
    } else {
      message = mutated(kSeeds[random() % std::size(kSeeds)], random);
    }
    const std::vector<std::string> answers = session.send(message);
    ASSERT_EQ(answers.size(), 1u) << "seed " << seed << ": " << message;
    const Json answer = Json::parse(answers[0], nullptr, false);
    ASSERT_TRUE(answer.is_object() && answer.contains("id") && answer.contains("result") != answer.contains("error"))
        << "seed " << seed << ": " << message << "\n" << answers[0];
  }
  EXPECT_EQ(session.call("console/run", {{"text", "1"}})["result"]["status"], "done");
  EXPECT_EQ(outside(), before);
}

TEST_F(SessionTest, ALoopThatShowsMuchIsSentInBoundedPieces) {
  TestSession session((root / "work").string());
  session.call("console/run", {{"text", "for k = 1:20000, disp(k); end"}});
  EXPECT_LT(session.notifications.size(), 1100u);
  EXPECT_NE(session.notifications.at(session.notifications.size() - 3).find("20000"), std::string::npos);
  EXPECT_LE(session.call("console/items", Json::object())["result"]["items"].size(), 1000u);
}

TEST_F(SessionTest, AGestureSendsTheModelOfASmallFigureOnly) {
  TestSession session((root / "work").string());
  for (const auto& [command, isSmall] : {std::pair("plot(1:2000)", true), std::pair("plot(1:2001)", false)}) {
    session.call("console/run", {{"text", command}});
    const Json moved =
        session.call("figure/gesture", {{"kind", "zoom"}, {"scale", 2}, {"width", 640}, {"height", 480}});
    EXPECT_EQ(moved.at("result").at("kind"), "plot");
    EXPECT_EQ(moved.at("result").at("model").is_object(), isSmall);
    EXPECT_EQ(session.call("figure/get", Json::object()).at("result").at("revision"),
              moved.at("result").at("revision"));
  }
}

TEST(JsonRpc, RefusesWhatIsTooLongOrTooDeep) {
  const auto codeOf = [](const std::string& message) {
    Json id;
    try {
      readRequest(message, &id);
    } catch (const Refusal& refusal) {
      return static_cast<int>(refusal.code);
    }
    return 0;
  };
  const auto request = [](const std::string& params) {
    return R"({"jsonrpc":"2.0","id":1,"method":"m","params":)" + params + "}";
  };
  const auto nested = [&](size_t depth) {
    return request("{\"a\":" + std::string(depth, '[') + std::string(depth, ']') + "}");
  };
  EXPECT_EQ(codeOf(nested(98)), 0);
  EXPECT_EQ(codeOf(nested(99)), kNoRequest);
  EXPECT_EQ(codeOf(std::string(1'000'000, '[')), kNoRequest);
  EXPECT_EQ(codeOf(request("{\"a\":\"" + std::string(1000, '[') + "\\\"[[\"}")), 0);
  EXPECT_EQ(codeOf(std::string(kMaxMessageBytes + 1, ' ')), kNoRequest);
  EXPECT_EQ(codeOf(request("{\"a\":\"\xff\"}")), kNoJson);
}

TEST(Methods, EachIsAnsweredInATranscript) {
  std::set<std::string> answered;
  for (const auto& file : fs::directory_iterator(test::testsDir() + "/transcripts/messages")) {
    std::ifstream lines(file.path());
    std::string method;
    for (std::string line; std::getline(lines, line);) {
      if (line.starts_with("> ")) method = line.substr(2, line.find(' ', 2) - 2);
      if (line.starts_with("= ")) answered.insert(method);
    }
  }
  for (const Method& method : methods()) EXPECT_TRUE(answered.contains(method.name)) << method.name;
}

TEST(Methods, TheirReferenceIsUpToDate) {
  const std::string path = test::testsDir() + "/../docs/protocol.md";
  const std::string stored = platform::native::readWholeFile(path).value_or("");
  const std::string head = stored.substr(0, stored.find("| Method |"));
  const std::string text = head + methodReference();
  if (std::getenv("KELO_ACCEPT") != nullptr) platform::native::replaceWholeFile(path, text);
  else EXPECT_EQ(stored, text);
}

}  // namespace
}  // namespace kelo::session
