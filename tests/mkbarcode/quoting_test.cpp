#include "mkbarcode/quoting.h"

#include <gtest/gtest.h>

#include "mkbarcode/program_runner.h"

namespace barcode::tool {
namespace {

TEST(HtmlEscaped, EscapesWhatHtmlReads) {
  EXPECT_EQ(HtmlEscaped("a<b>&\"c\"'d' \xE3\x81\x82"),
            "a&lt;b&gt;&amp;&quot;c&quot;&#39;d&#39; \xE3\x81\x82");
  EXPECT_EQ(HtmlEscaped(""), "");
}

TEST(ShellQuoted, LeavesPlainWords) {
  EXPECT_EQ(ShellQuoted("ABC-123"), "ABC-123");
  EXPECT_EQ(ShellQuoted("out/a_b.png"), "out/a_b.png");
}

TEST(ShellQuoted, QuotesTheRest) {
  EXPECT_EQ(ShellQuoted(""), "''");
  EXPECT_EQ(ShellQuoted("{FNC1}01"), "'{FNC1}01'");
  EXPECT_EQ(ShellQuoted("it's"), "'it'\\''s'");
}

TEST(ShellQuoted, TheShellReadsTheTextBack) {
  for (const std::string text : {"", "plain", "a b", "$HOME", "`id`", "\\", "\"", "'", "''", "a\nb", "*", "~",
                                 "!x", "#1", "{a,b}", "a;b|c&d<e>f(g)", "\xE3\x81\x82"}) {
    EXPECT_EQ(RunShell("printf %s " + ShellQuoted(text)).output, text);
  }
}

TEST(CLiteral, EscapesWhatALiteralCannotHold) {
  EXPECT_EQ(CLiteral("ABC"), "\"ABC\"");
  EXPECT_EQ(CLiteral("a\"b\\c"), "\"a\\\"b\\\\c\"");
  EXPECT_EQ(CLiteral("\x1D"
                     "1\n\x7F"),
            "\"\\0351\\012\\177\"");
  EXPECT_EQ(CLiteral("\xE3\x81\x82"), "\"\xE3\x81\x82\"");
}

TEST(Concat, JoinsItsParts) {
  EXPECT_EQ(Concat({"a", "", std::string("bc")}), "abc");
}

}  // namespace
}  // namespace barcode::tool
