// The message table: the 22 texts that every command shows in its message
// boxes, addressed by number (MSG0001 .. MSG0022). The Russian installation
// uses the built-in Russian texts; an international one reads each text from
// the language file, with the English text as the default. The texts are the
// product's own and stand exactly as written, misspellings included.
#ifndef LMT_CORE_MESSAGES_H_
#define LMT_CORE_MESSAGES_H_

#include <array>
#include <string>
#include <string_view>

namespace lmt::core {

inline constexpr int kMessageCount = 22;

// Named numbers for the messages the code refers to.
enum Msg : int {
  kMsgCadNotOpen = 1,
  kMsgOpenCadProgram = 2,
  kMsgCannotConnect = 3,
  kMsgNoOpenDrawing = 4,
  kMsgInterrupted = 5,
  kMsgTemplateEmpty = 6,
  kMsgSeveralSelected = 7,
  kMsgTemplateReceived = 8,
  kMsgNoObjects = 9,
  kMsgSelectionComplete = 10,
  kMsgLayoutTemplateNotFound = 11,
  kMsgSpecifyLayoutName = 12,
  kMsgLayoutSampleNotFound = 13,
  kMsgSpecifyTemplateLayoutName = 14,
  kMsgLayoutsComplete = 15,
  kMsgSpecifyRectangleLength = 16,
  kMsgScaleOfRectangle = 17,
  kMsgImpossibleInModel = 18,
  kMsgStopBeforeClosing = 19,
  kMsgSpecifyStartPoint = 20,
  kMsgSelectSortPolyline = 21,
  kMsgSelectTemplate = 22,
};

// "MSG0001" .. "MSG0022": the language file's key of message `number`.
std::string MessageKey(int number);

std::string_view RussianMessage(int number);  // REQUIRES: 1 <= number <= 22
std::string_view EnglishMessage(int number);  // REQUIRES: 1 <= number <= 22

class MessageTable {
 public:
  // Starts in Russian, the default installation.
  MessageTable();

  void LoadRussian();
  void LoadEnglish();
  // REQUIRES: 1 <= number <= 22.
  void Set(int number, std::string text);
  const std::string& Get(int number) const;

 private:
  std::array<std::string, kMessageCount> texts_;
};

}  // namespace lmt::core

#endif  // LMT_CORE_MESSAGES_H_
