// Indentation of a line, and the commands on a selection. The selection stands between brackets, ‹
// and ›.
#include "editor/indentation.h"

#include <gtest/gtest.h>

#include "editor/line_commands.h"
#include "messages/utf16.h"

namespace kelo {
namespace {

TEST(Indentation, FollowsTheEnclosingGroup) {
  const struct {
    const char *above, *line, *expected;
  } kRows[] = {
      {"", "\t x  ", "\t x  "},  // in no group a line stays
      {"for i = 1:3\n", "x", "    x"},
      {"  for i = 1:3\n", "\t end ", "  end "},
      {"if a\r\n", "   else", "else"},
      {"for i = 1:3\nend\n", "  x", "  x"},
      {"if a\nfor k = x(end)\nend\n", "x", "    x"},
      {"if a % for\ns = 'while';\n", "x", "    x"},
      {"x = 1; while 1\n", "x", "           x"},
      {"switch a\n", "case 1", "    case 1"},
      {"switch a\n    case 1\n", "x", "        x"},
      {"switch a\n    case 1\n        x\n", "case 2", "    case 2"},
      {"switch a\n    case 1\n", "  end", "end"},
      {"switch a\n  case 1\n", "end", "  end"},
      {"switch a\n    case 1\n", "else", "        else"},
      {"switch a\n    case 1\n        if b\n        end\n", "otherwise", "    otherwise"},
      {"switch a\n    case 1\nend\n", "  x", "  x"},
      {"while a\n    while b\n    end\n", "end", "end"},
      {"if a\n", "end_time = 1", "end_time = 1"},  // no word boundary is asked for
      {"switch a\n    case 1\n", "casework", "    casework"},
      {"'\xF0\x9D\x84\x9E'; if a\n", "x", "          x"},  // columns count UTF-16 units
      {"s.for = 1\nfor_x\n", "x", "x"},
  };
  for (const auto& row : kRows) {
    const std::string text = std::string(row.above) + row.line + "\nend";
    EXPECT_EQ(indentedLine(utf16Length(row.above) + 1, text), row.expected) << text;
  }
  EXPECT_EQ(indentedLine(-1, "a"), std::nullopt);
  EXPECT_EQ(indentedLine(2, "a"), std::nullopt);
  EXPECT_EQ(indentedLine(2, "a\n"), "");
}

std::optional<EditedText> applied(decltype(&comment) command, std::string marked) {
  const size_t start = marked.find('<');
  marked.erase(start, 1);
  const size_t end = marked.find('>');
  marked.erase(end, 1);
  auto edited = command(marked, static_cast<int64_t>(start), static_cast<int64_t>(end));
  if (!edited) return edited;
  edited->text.insert(static_cast<size_t>(edited->end), ">");
  edited->text.insert(static_cast<size_t>(edited->start), "<");
  return edited;
}

TEST(LineCommands, ChangeTheLinesOfTheSelection) {
  const struct {
    decltype(&comment) command;
    const char *before, *after;
  } kRows[] = {
      {comment, "<>", "% <>"},
      {comment, "a\nb<c\n>d", "a\n% b<c\n>d"},
      {comment, "<a\r\nb>\r\n", "<% a\r\n% b>\r\n"},
      {comment, "a\n<>b", "a\n% <>b"},
      {uncomment, "<% a\n %b\n% % c>", "<a\n %b\n% c>"},
      {uncomment, "%< a\nb>", "<a\nb>"},
      {indent, "<for i = 1:3\nx\nif a\ny\nend\n  end>", "<for i = 1:3\n    x\n    if a\n        y\n    end\nend>"},
      {indent, "if a\n  \tx<>y", "if a\n    x<>y"},
  };
  for (const auto& row : kRows) {
    const auto edited = applied(row.command, row.before);
    ASSERT_TRUE(edited) << row.before;
    EXPECT_EQ(edited->text, row.after);
  }
  EXPECT_FALSE(comment("abc", 2, 1));
  EXPECT_FALSE(comment("abc", 0, 4));
  EXPECT_FALSE(indent("abc", -1, 1));
}

}  // namespace
}  // namespace kelo
