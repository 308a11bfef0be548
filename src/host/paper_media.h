// Paper names as plot devices know them ("canonical media names") and the
// sheet size they carry: "ISO_full_bleed_A3_(420.00_x_297.00_MM)",
// "UserDefinedMetric_(891.00_x_420.00_MM)",
// "ANSI_A_(8.50_x_11.00_Inches)". A host without a device database (the
// embedded one) learns a paper's size from its name; every host reads and
// writes the name itself unchanged.
#ifndef LMT_HOST_PAPER_MEDIA_H_
#define LMT_HOST_PAPER_MEDIA_H_

#include <optional>
#include <string>
#include <string_view>

namespace lmt::host {

// A sheet as the device feeds it, in millimetres, before any plot rotation.
struct MediaSize {
  double width = 0;
  double height = 0;
  bool inches = false;  // the name gives inches (the layout's paper units)
};

// The size in the last "(W_x_H_UNIT)" of `name`, UNIT being MM or Inches
// (ASCII case ignored; spaces may stand for the underscores, as in the
// names devices show); nullopt when the name carries no positive size.
std::optional<MediaSize> MediaSizeFromName(std::string_view name);

// "PREFIX(W_x_H_MM)" with two decimals, as devices spell metric sizes.
std::string MetricMediaName(std::string_view prefix, double width,
                            double height);

}  // namespace lmt::host

#endif  // LMT_HOST_PAPER_MEDIA_H_
