// The fixed texts the batch windows show besides the shared message table:
// refusals of Run Lisp, the empty clipboard of Replace text, the status
// captions of the runs and the final count box.
#ifndef LMT_BATCH_BATCH_MESSAGES_H_
#define LMT_BATCH_BATCH_MESSAGES_H_

#include <string>
#include <string_view>

namespace lmt::batch {

inline constexpr std::string_view kLispFileNotFound = "Lisp file not found.";
inline constexpr std::string_view kEnterLispStartCommand =
    "Enter lisp start command";
inline constexpr std::string_view kClipboardEmpty = "Буфер обмена пуст!";
inline constexpr std::string_view kFolderBrowserTitle = "Select a folder:";

// Status captions of the Run Lisp, Replace and Import runs.
inline constexpr std::string_view kCaptionOpenFile = "Open File ...";
inline constexpr std::string_view kCaptionRunLisp = "Run Lisp ...";
inline constexpr std::string_view kCaptionImportFile = "Import File ...";
inline constexpr std::string_view kCaptionSaveFile = "Save File ...";
inline constexpr std::string_view kCaptionCloseFile = "Close File ...";

// "Import Page " k " from " n, while a PDF is imported page by page.
std::string ImportPageCaption(int page, int page_count);

// The text of the information box that ends every run, interrupted or not:
// the number of processed files (a file whose open failed counts too),
// under the window's title.
std::string ProcessedCountMessage(int processed);

}  // namespace lmt::batch

#endif  // LMT_BATCH_BATCH_MESSAGES_H_
