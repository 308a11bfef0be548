#include "layouts/creation_parameters.h"

#include <charconv>
#include <cmath>
#include <cstdio>

#include "core/numbers.h"

namespace lmt::layouts {
namespace {

// Control names of the window, written once.
constexpr std::string_view kScalePaperText = "Text_MashtabBumaga";
constexpr std::string_view kScaleColonLabel = "TXT_Dvoetoch";
constexpr std::string_view kScaleModelText = "Text_MashtabModel";
constexpr std::string_view kPickFrameLengthButton = "Command_GetMashtabRamka";
constexpr std::string_view kFrameLengthText = "Text_AutoMashtabRamka";
constexpr std::string_view kAnnotationPaperText =
    "Text_MashtabAnnotationBumaga";
constexpr std::string_view kAnnotationModelText = "Text_MashtabAnnotationModel";
constexpr std::string_view kPictureCopyViewport = "Picture_CopyViewport";

std::string_view Trim(std::string_view text) {
  size_t begin = text.find_first_not_of(" \t");
  if (begin == std::string_view::npos) return {};
  size_t end = text.find_last_not_of(" \t");
  return text.substr(begin, end - begin + 1);
}

}  // namespace

double FieldToNumber(std::string_view text, bool decimal_comma) {
  // A failed conversion is 0 in core's parser too; infinities would reach a
  // viewport's size, so they count as failed here.
  double value = core::TextToNumber(text, decimal_comma);
  return std::isfinite(value) ? value : 0;
}

std::string NumberToField(double value, bool decimal_comma) {
  if (!std::isfinite(value)) return "";
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%.15g", value);
  std::string text = buffer;
  // %g honours the C locale only; put the user's separator in.
  for (char& c : text) {
    if (c == '.' || c == ',') c = decimal_comma ? ',' : '.';
  }
  return text;
}

double DivideOrKeep(double numerator, double denominator, double previous) {
  if (denominator == 0) return previous;
  double quotient = numerator / denominator;
  return std::isfinite(quotient) ? quotient : previous;
}

std::string AnnotationScaleName(const CreationFieldTexts& fields) {
  const std::string& paper = fields.annotation_as_viewport
                                 ? fields.scale_paper
                                 : fields.annotation_paper;
  const std::string& model = fields.annotation_as_viewport
                                 ? fields.scale_model
                                 : fields.annotation_model;
  std::string name(Trim(paper));
  name += ':';
  name += Trim(model);
  return name;
}

CreationParameters ReadCreationParameters(const CreationFieldTexts& f,
                                          bool decimal_comma,
                                          const PreviousScales& previous) {
  auto num = [decimal_comma](const std::string& text) {
    return FieldToNumber(text, decimal_comma);
  };
  CreationParameters p;
  p.scale_mode = f.scale_mode;
  p.scale =
      DivideOrKeep(num(f.scale_paper), num(f.scale_model), previous.scale);
  p.frame_paper_length = num(f.frame_paper_length);
  p.corner = {num(f.corner_x), num(f.corner_y)};
  p.increment = num(f.increment);
  p.viewport_layer = f.viewport_layer;
  p.lock_display = f.lock_display;
  p.plot_layout = f.plot_layout;
  p.switch_on_at_once = f.switch_on_at_once;
  p.delete_earlier_layouts = f.delete_earlier_layouts;
  p.orientation = f.orientation;
  p.rotation_rule = f.rotation_rule;
  p.rotate_by_block = f.rotate_by_block;
  p.set_annotation_scale = f.set_annotation_scale;
  p.annotation_scale = AnnotationScaleName(f);
  p.copy_viewport = f.copy_viewport;
  p.copy_scale = DivideOrKeep(num(f.copy_scale_paper), num(f.copy_scale_model),
                              previous.copy_scale);
  p.copy_corner = {num(f.copy_corner_x), num(f.copy_corner_y)};
  p.copy_width = num(f.copy_width);
  p.copy_height = num(f.copy_height);
  return p;
}

std::vector<ControlState> ScaleOptionStates(ScaleMode mode) {
  bool fixed = mode == ScaleMode::kFixed;
  return {{kScalePaperText, fixed},
          {kScaleColonLabel, fixed},
          {kScaleModelText, fixed},
          {kPickFrameLengthButton, !fixed},
          {kFrameLengthText, !fixed}};
}

std::vector<ControlState> AnnotationCheckStates(bool checked) {
  return {{kAnnotationPaperText, checked}, {kAnnotationModelText, checked}};
}

std::vector<ControlState> CopyViewportCheckStates(bool checked) {
  return {{kPictureCopyViewport, checked}};
}

std::optional<double> FrameLengthFromPick(double distance,
                                          std::string_view answer,
                                          bool decimal_comma) {
  if (distance == 0) return std::nullopt;
  double divisor =
      Trim(answer).empty() ? 1.0 : FieldToNumber(answer, decimal_comma);
  double length = DivideOrKeep(distance, divisor, 0);
  if (length == 0) return std::nullopt;
  return length;
}

}  // namespace lmt::layouts
