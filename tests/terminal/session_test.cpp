// A session at a terminal: the program runs behind a pseudo terminal, is typed to, and what appears
// is read.
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "figures/coding/base64.h"

namespace {

using Clock = std::chrono::steady_clock;
constexpr auto kPatience = std::chrono::seconds(20);

class Session {
 public:
  Session(const std::filesystem::path& folder, bool colour) {
    const winsize size{24, 80, 0, 0};
    child_ = forkpty(&terminal_, nullptr, nullptr, &size);
    if (child_ != 0) return;
    setenv("TERM", "xterm", 1);
    setenv("ASAN_OPTIONS", "detect_leaks=0", 0);  // libedit keeps copies of the names that it is given
    setenv("XDG_STATE_HOME", (folder / "state").c_str(), 1);
    setenv("XDG_DATA_HOME", (folder / "data").c_str(), 1);
    colour ? unsetenv("NO_COLOR") : setenv("NO_COLOR", "1", 1);
    if (chdir(folder.c_str()) == 0) execl(KELO_PROGRAM, "kelo", nullptr);
    _exit(127);
  }
  ~Session() {
    if (child_ > 0) {
      kill(child_, SIGKILL);
      waitpid(child_, nullptr, 0);
    }
    close(terminal_);
  }

  /// Types keys, then waits until `expected` appears after what was waited for before.
  testing::AssertionResult type(const std::string& keys, const std::string& expected) {
    EXPECT_EQ(write(terminal_, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
    return shows(expected);
  }
  /// Types keys once a second until it appears: those that come before a pause do not end it, and a
  /// terminal drops the end of the input while no line is being read.
  testing::AssertionResult typeUntil(const std::string& keys, const std::string& expected) {
    const auto isShown = [&] { return shown_.find(expected, seen_) != std::string::npos; };
    for (int k = 0; k < 10 && !isShown(); ++k) {
      EXPECT_EQ(write(terminal_, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
      for (int part = 0; part < 20 && !isShown(); ++part) readSome();
    }
    return shows(expected);
  }
  testing::AssertionResult shows(const std::string& expected) {
    const auto end = Clock::now() + kPatience;
    while (Clock::now() < end) {
      const size_t found = shown_.find(expected, seen_);
      if (found != std::string::npos) {
        seen_ = found + expected.size();
        return testing::AssertionSuccess();
      }
      readSome();
    }
    return testing::AssertionFailure() << "never showed \"" << expected << "\" but \"" << shown_.substr(seen_) << '"';
  }
  /// Answers as a terminal would, without waiting.
  void answer(const std::string& text) {
    EXPECT_EQ(write(terminal_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
  }
  /// What stands between two texts that appear, both included.
  std::string taken(const std::string& first, const std::string& last) {
    EXPECT_TRUE(shows(first));
    const size_t begin = seen_ - first.size();
    EXPECT_TRUE(shows(last));
    return shown_.substr(begin, seen_ - begin);
  }
  /// Types the end of the input until the program has ended, for a terminal drops that key while a
  /// line is not being read; the exit status.
  int end() {
    int status = 0;
    const auto end = Clock::now() + kPatience;
    while (waitpid(child_, &status, WNOHANG) == 0) {
      if (Clock::now() > end) return -1;
      EXPECT_EQ(write(terminal_, "\x04", 1), 1);
      for (int k = 0; k < 10; ++k) readSome();
    }
    child_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

 private:
  void readSome() {
    pollfd waiting{terminal_, POLLIN, 0};
    if (poll(&waiting, 1, 50) <= 0) return;
    char part[4096];
    const ssize_t count = read(terminal_, part, sizeof part);
    if (count > 0) shown_.append(part, static_cast<size_t>(count));
  }

  int terminal_ = -1;
  pid_t child_ = -1;
  std::string shown_;
  size_t seen_ = 0;
};

class Terminal : public testing::Test {
 protected:
  Terminal() {
    char name[] = "/tmp/kelo_session_XXXXXX";
    folder_ = mkdtemp(name);
  }
  ~Terminal() override { std::filesystem::remove_all(folder_); }
  std::filesystem::path folder_;
};

const char* const kUp = "\x1b[A";
const char* const kControlC = "\x03";

TEST_F(Terminal, TypeErrCorrectRecall) {
  Session session(folder_, true);
  ASSERT_TRUE(session.shows("> "));
  EXPECT_TRUE(session.type("x = 2 + nope\r",
                           "\x1b[31mError at Line 1(9) of the console. Variable or function named \"nope\" not "
                           "found.\x1b[0m\r\n    x = 2 + nope\r\n            ^"));
  EXPECT_TRUE(session.type(std::string(kUp) + "\b\b\b\b3\r", "x = \r\n 5.0000"));
  EXPECT_TRUE(session.type("for k = 1:2\r", "| "));
  EXPECT_TRUE(session.type("k\rend\r", "k = \r\n 1.0000\r\n\r\nk = \r\n 2.0000"));
  EXPECT_TRUE(session.type("[1 2\r3 4]\r", "ans = \r\n 1.0000   2.0000\r\n 3.0000   4.0000"));
  EXPECT_EQ(session.end(), 0);
}

TEST_F(Terminal, CompletesBuiltInsVariablesAndFiles) {
  std::filesystem::create_directories(folder_);
  FILE* const file = fopen((folder_ / "zebra_file.m").c_str(), "w");
  fclose(file);
  Session session(folder_, false);
  EXPECT_TRUE(session.type("my_long_name = 7;\r", "> "));
  EXPECT_TRUE(session.type("my_l\t\r", "my_long_name"));
  EXPECT_TRUE(session.shows(" 7.0000"));
  EXPECT_TRUE(session.type("fibon\t", "acci"));
  EXPECT_TRUE(session.type("(10)\r", " 55.000"));
  EXPECT_TRUE(session.type("zebr\t", "a_file"));
}

TEST_F(Terminal, StopsWaitsAndAsks) {
  Session session(folder_, false);
  EXPECT_TRUE(session.type("x = 1;\r", "> "));
  EXPECT_TRUE(session.type("disp('runs'), while 1, x = x + 1; end\r", "\r\nruns"));
  EXPECT_TRUE(session.type(kControlC, "Terminated by user interruption"));
  EXPECT_TRUE(session.type("y = input('how many? ')\r", "\nhow many? "));
  EXPECT_TRUE(session.type("6*7\r", "y = \r\n 42.000"));
  EXPECT_TRUE(session.type("disp('waits'), pause, disp('goes on')\r", "\r\nwaits"));
  EXPECT_TRUE(session.typeUntil("\r", "\r\ngoes on"));
}

TEST_F(Terminal, KeepsWhatIsPastedAfterACommand) {
  Session session(folder_, false);
  ASSERT_TRUE(session.shows("> "));
  EXPECT_TRUE(session.type("pause(0.3); 5\r6\rn = input('n? ')\r7\rpause(0.1)\rn + 1\r", "ans = \r\n 5.0000"));
  EXPECT_TRUE(session.shows("ans = \r\n 6.0000"));
  EXPECT_TRUE(session.shows("n = \r\n 7.0000"));
  EXPECT_TRUE(session.shows("ans = \r\n 8.0000"));
}

TEST_F(Terminal, EndOfInputAfterAFirstLineDropsTheText) {
  Session session(folder_, false);
  EXPECT_TRUE(session.type("kept = 3;\r", "> "));
  EXPECT_TRUE(session.type("for k = 1:2\r", "| "));
  EXPECT_TRUE(session.typeUntil("\x04", "> "));
  EXPECT_TRUE(session.type("kept\r", "kept = \r\n 3.0000"));
  EXPECT_EQ(session.end(), 0);
}

TEST_F(Terminal, PointsIntoTheAnswerOfInput) {
  Session session(folder_, true);
  EXPECT_TRUE(session.type("x = input('? '); y = nope\r", "? "));
  EXPECT_TRUE(session.type("1 + )\r", "    1 + )\r\n        ^"));
  EXPECT_TRUE(session.type("x = input('? '); y = nope\r", "? "));
  EXPECT_TRUE(session.type("2\r", "y = nope\r\n                         ^"));
}

TEST_F(Terminal, HistoryOutlivesTheProgram) {
  {
    Session session(folder_, false);
    EXPECT_TRUE(session.type("kept = 11\r", " 11.000"));
    EXPECT_EQ(session.end(), 0);
  }
  Session session(folder_, false);
  ASSERT_TRUE(session.shows("> "));
  EXPECT_TRUE(session.type(kUp, "kept = 11"));
  EXPECT_TRUE(session.type("\r", " 11.000"));
}

// ---- Without a terminal

/// The status of the program, which is interrupted after so many milliseconds; -1 when it goes on
/// nevertheless.
int statusWhenInterruptedAfter(int milliseconds) {
  const pid_t child = fork();
  if (child == 0) {
    fclose(stderr);
    execl(KELO_PROGRAM, "kelo", "-e", "x = 1;", "-e", "x = 2;", "-e", "while 1, x = 1; end", "-e", "y = 2", nullptr);
    _exit(127);
  }
  usleep(static_cast<useconds_t>(1000 * milliseconds));
  kill(child, SIGINT);
  int status = -1;
  for (const auto end = Clock::now() + kPatience; waitpid(child, &status, WNOHANG) == 0; usleep(1000)) {
    if (Clock::now() < end) continue;
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    return -1;
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

TEST(Interrupt, IsNotLostAtTheStartNorBetweenCommands) {
  for (int milliseconds = 0; milliseconds < 60; milliseconds += 3) {
    const int status = statusWhenInterruptedAfter(milliseconds);
    EXPECT_TRUE(status == 1 || status == 128 + SIGINT) << status << " after " << milliseconds << " ms";
  }
}

TEST_F(Terminal, KeepsShowsAndExportsFigures) {
  const struct {
    const char *line, *answer;
  } rows[] = {
      {":figures", "No Plot. Saved plots will appear here\r\n"},
      {":save one", "There is no figure to save\r\n"},
      {":export f.svg", "There is no figure to write to f.svg\r\n"},
      {"plot([1 2 NaN])", "\xe2\xa0"},  // braille
      {":save one", "Failed to Save. Error occurred while writing data to the figure file.\r\n"},
      {"plot(1:3)", "\xe2\xa0"},
      {":save 1x", "Invalid File Name. Only letters, numbers, and underscore are allowed"},
      {":save", ":save needs a NAME\r\n"},
      {":close now", ":close takes no argument\r\n"},
      {":export f.gif", "A figure file should end in .png, .pdf, .svg or .kfig: f.gif\r\n"},
      {":export away/f.svg", "away/f.svg cannot be written: "},
      {":show one", "There is no saved figure named \"one\"\r\n"},
      {":save one", "Saved as one\r\n"},
      {":save one", "Failed to Save. Figure named \"one\" already exists.\r\n"},
      {" :figures ", "one  Saved: 20"},
      {":close", "> "},
      {":close", "There is no figure to close\r\n"},
      {":export f.svg", "There is no figure to write to f.svg\r\n"},
      {":show one", "\xe2\xa0"},
      {":export f.svg", "Written to f.svg\r\n"},
      {":leave", "There is no command :leave; ? lists those that there are\r\n"},
      {"xlim", "ans = \r\n 1.0000   3.0000"},
      {"?", ":export FILE"},
  };
  Session session(folder_, false);
  ASSERT_TRUE(session.shows("> "));
  for (const auto& row : rows) {
    EXPECT_TRUE(session.type(std::string(row.line) + "\r", row.line + std::string("\r\n"))) << row.line;
    EXPECT_TRUE(session.shows(row.answer)) << row.line;
  }
  EXPECT_TRUE(std::filesystem::exists(folder_ / "f.svg"));
  EXPECT_TRUE(std::filesystem::exists(folder_ / "data/kelo/.FIGURES/one.kfig"));
}

const char* const kGraphicsQuestion = "\x1b_Gi=31,s=1,v=1,a=q,t=d,f=24;AAAA\x1b\\\x1b[16t\x1b[c";

/// The content of the chunks of a picture by the kitty protocol.
std::string kittyContent(const std::string& text) {
  std::string coded;
  for (size_t at = text.find("\x1b_G"); at != std::string::npos; at = text.find("\x1b_G", at + 1)) {
    const size_t content = text.find(';', at) + 1, end = text.find("\x1b\\", content);
    EXPECT_LE(end - content, 4096u);
    coded += text.substr(content, end - content);
  }
  return kelo::figures::bytesOfBase64(coded).value_or("");
}

uint32_t bigEndian(const std::string& bytes, size_t at) {
  uint32_t value = 0;
  for (size_t k = 0; k < 4; ++k) value = value << 8 | static_cast<uint8_t>(bytes.at(at + k));
  return value;
}

TEST_F(Terminal, ShowsPicturesWhereTheTerminalKnowsThem) {
  {
    Session session(folder_, true);
    ASSERT_TRUE(session.type("plot(1:3)\r", kGraphicsQuestion));
    session.answer("\x1b_Gi=31;OK\x1b\\\x1b[6;20;10t\x1b[?62;4c");
    const std::string png = kittyContent(session.taken("\x1b_Ga=T,f=100,q=2,m=1;", "\r\n"));
    ASSERT_EQ(png.substr(1, 3), "PNG");
    EXPECT_EQ(bigEndian(png, 16), 790u) << "79 cells of 10 pixels";
    EXPECT_EQ(bigEndian(png, 20), 593u);
    size_t at = 8;
    std::string kind;
    while (at + 12 <= png.size()) kind = png.substr(at + 4, 4), at += 12 + bigEndian(png, at);
    EXPECT_EQ(kind, "IEND");
    EXPECT_EQ(at, png.size());
    EXPECT_TRUE(session.type("hold('on')\r1 + 1\r", "1 + 1\r\nans = \r\n 2.0000")) << "nothing to show anew";
  }
  Session session(folder_, true);
  ASSERT_TRUE(session.type("plot(1:3)\r", kGraphicsQuestion));
  session.answer("\x1b[6;20;10t\x1b[?62;4;22c");
  const std::string sixels = session.taken("\x1bP", "\x1b\\");
  EXPECT_NE(sixels.find("\"1;1;790;593"), std::string::npos) << sixels.substr(0, 80);
  EXPECT_GE(std::count(sixels.begin(), sixels.end(), '-'), 593 / 6);
}

TEST_F(Terminal, DrawsWithCharactersWhereTheTerminalSaysNothing) {
  Session session(folder_, true);
  ASSERT_TRUE(session.type("plot(1:3)\r", kGraphicsQuestion));
  const auto begin = Clock::now();
  EXPECT_TRUE(session.shows("\xe2\xa3"));
  EXPECT_LT(Clock::now() - begin, std::chrono::seconds(5));
}

}  // namespace
