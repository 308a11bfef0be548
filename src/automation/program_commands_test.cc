// The Lisp the server plays: which forms of a loaded file become commands.
#include "automation/program_commands.h"

#include <gtest/gtest.h>

namespace lmt::automation {
namespace {

TEST(ProgramCommandsTest, DefunsKeepTheirCommandCallsOnly) {
  const LispCommands commands = ParseLispCommands(
      "; a comment (defun c:NOT () (command \"_x\"))\n"
      "(defun helper () (command \"_Ucs\" \"_World\"))\n"
      "( DEFUN c:Go ( / a)\n"
      "  (setq a \"(command \\\"_no\\\")\")\n"
      "  (command \"_-Layout\" \"_Template\" \"C:\\\\d\\\\p.dxf\" \"P\")\n"
      "  (if a (command \"_Layout\" \"_Set\" \"P\"))\n"
      "  (princ))\n"
      "(defun c:EMPTY () (princ))");
  ASSERT_EQ(commands.size(), 2u);
  ASSERT_TRUE(commands.contains("GO"));
  EXPECT_EQ(commands.at("GO"),
            (std::vector<std::string>{
                "(command \"_-Layout\" \"_Template\" \"C:\\\\d\\\\p.dxf\" "
                "\"P\")",
                "(command \"_Layout\" \"_Set\" \"P\")"}));
  EXPECT_TRUE(commands.at("EMPTY").empty());
}

TEST(ProgramCommandsTest, UnbalancedFileKeepsWhatCameBefore) {
  const LispCommands commands = ParseLispCommands(
      "(defun c:A () (command \"_Ucs\" \"_World\"))\n(defun c:B () (command");
  ASSERT_EQ(commands.size(), 1u);
  EXPECT_EQ(commands.at("A").size(), 1u);
}

}  // namespace
}  // namespace lmt::automation
