#include "core/globals.h"

#include "core/text_encoding.h"

namespace lmt::core {

bool Globals::russian() const {
  return EqualsIgnoreAsciiCase(language_mode, kLanguageModeRussian);
}

void Globals::UseRussian() {
  language_mode = std::string(kLanguageModeRussian);
  product_name = std::string(kProductNameRussian);
  // The Russian support pair: product data that the maker fills in.
  support_address = "";
  web_site = "";
}

void Globals::UseLanguageFile(std::filesystem::path language_file) {
  language_file_path = std::move(language_file);
  language_mode = std::string(kLanguageModeMulti);
  product_name = std::string(kProductNameInternational);
  // The support pair of the international installation: product data that
  // the maker fills in.
  support_address = "";
  web_site = "";
}

}  // namespace lmt::core
