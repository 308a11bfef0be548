#include "batch/batch_messages.h"

namespace lmt::batch {

std::string ImportPageCaption(int page, int page_count) {
  return "Import Page " + std::to_string(page) + " from " +
         std::to_string(page_count);
}

std::string ProcessedCountMessage(int processed) {
  return std::to_string(processed);
}

}  // namespace lmt::batch
