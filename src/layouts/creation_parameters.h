// The creation parameters of `OknoSozdatLayout` as a run uses them: the
// texts and flags of the window's controls go in, numbers and choices come
// out. Also the window's own small rules: the key filter of its numeric
// fields, which controls each check or option enables, and the scale taken
// from a distance picked in the drawing (`Command_GetMashtabRamka`).
//
// Pure functions over plain values: reading the controls, storing them in
// the settings file and asking the user belong to the window and the host.
// Numbers follow the shared parser: empty text is 0, "." and "," both work
// as decimal separator, anything unreadable is 0. No field is validated
// beyond that, so a zero or missing value reaches the caller as such; only
// divisions are guarded, so that no infinity or NaN reaches a viewport.
#ifndef LMT_LAYOUTS_CREATION_PARAMETERS_H_
#define LMT_LAYOUTS_CREATION_PARAMETERS_H_

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frames/frame_table.h"

namespace lmt::layouts {

// `Option_SelectMashtab`, by index.
enum class ScaleMode : int {
  kFixed = 0,      // paper : model from the two fixed-scale fields
  kFromWidth = 1,  // the frame's width occupies `Text_AutoMashtabRamka`
};

// `Option_ViewportVertGor`, by index: which side of the frame is laid
// horizontal on the sheet.
enum class FrameOrientation : int { kHorizontal = 0, kVertical = 1 };

// `Option_ViewportRotateStart`, by index.
enum class RotationRule : int { kExtended = 0, kStandard = 1 };

// What the controls hold when a run starts: texts exactly as typed, checks
// and options as chosen. Each member names its control.
struct CreationFieldTexts {
  ScaleMode scale_mode = ScaleMode::kFixed;  // Option_SelectMashtab
  std::string scale_paper;                   // Text_MashtabBumaga
  std::string scale_model;                   // Text_MashtabModel
  std::string frame_paper_length;            // Text_AutoMashtabRamka
  std::string corner_x;                      // Text_CoordX
  std::string corner_y;                      // Text_CoordY
  std::string increment;                     // Text_RamkaPrirachenie
  std::string viewport_layer;                // Text_NameSloiViewport
  bool lock_display = false;                 // Check_ZablokirovatVyport
  bool plot_layout = false;                  // Check_OblastList
  bool switch_on_at_once = false;            // Check_Initializacia
  bool delete_earlier_layouts = false;       // Check_UdalitListi
  FrameOrientation orientation = FrameOrientation::kHorizontal;
  RotationRule rotation_rule = RotationRule::kStandard;
  bool rotate_by_block = false;         // Check_ViewportRotateBlock
  bool set_annotation_scale = false;    // Check_MashtabAnnotation
  bool annotation_as_viewport = false;  // Check_MashtabAnnotationPo
  std::string annotation_paper;         // Text_MashtabAnnotationBumaga
  std::string annotation_model;         // Text_MashtabAnnotationModel
  bool copy_viewport = false;           // Check_CopyViewport
  std::string copy_scale_paper;         // Text_CopyMashtabBumaga
  std::string copy_scale_model;         // Text_CopyMashtabModel
  std::string copy_corner_x;            // Text_CopyCoordX
  std::string copy_corner_y;            // Text_CopyCoordY
  std::string copy_width;               // Text_CopyShirina
  std::string copy_height;              // Text_CopyVisota
};

// The run values. Lengths are paper units unless said otherwise; scales
// are paper units per model unit.
struct CreationParameters {
  ScaleMode scale_mode = ScaleMode::kFixed;
  double scale = 0;               // s, the fixed scale
  double frame_paper_length = 0;  // L, for ScaleMode::kFromWidth
  frames::Point corner;           // X, Y: the viewport's lower-left corner
  double increment = 0;           // i, added to width and height
  std::string viewport_layer;
  bool lock_display = false;
  bool plot_layout = false;
  bool switch_on_at_once = false;
  bool delete_earlier_layouts = false;
  FrameOrientation orientation = FrameOrientation::kHorizontal;
  RotationRule rotation_rule = RotationRule::kStandard;
  bool rotate_by_block = false;
  bool set_annotation_scale = false;
  std::string annotation_scale;  // the scale name for CANNOSCALE, "1:100"
  bool copy_viewport = false;
  double copy_scale = 0;  // s2
  frames::Point copy_corner;
  double copy_width = 0;
  double copy_height = 0;
};

// The scales a run had before: a division that cannot be done keeps them.
struct PreviousScales {
  double scale = 0;
  double copy_scale = 0;
};

// The shared number parser (core's TextToNumber): empty text or text that
// is not a number gives 0; "." and "," are both decimal separators whatever
// `decimal_comma` says; blanks around the number and a sign are allowed;
// "inf" and "nan" give 0.
double FieldToNumber(std::string_view text, bool decimal_comma);

// Writes a number the way a field shows it: up to 15 significant digits,
// no trailing zeros, the locale's separator ("," when `decimal_comma`).
// Non-finite values give "".
std::string NumberToField(double value, bool decimal_comma);

// numerator / denominator, or `previous` when the quotient is not a finite
// number (a zero denominator): a failed division leaves the value as it
// was.
double DivideOrKeep(double numerator, double denominator, double previous);

// The run values. s = paper / model and s2 likewise, each keeping its
// previous value when its model field is 0; the annotation scale name is
// built by AnnotationScaleName.
CreationParameters ReadCreationParameters(const CreationFieldTexts& fields,
                                          bool decimal_comma,
                                          const PreviousScales& previous = {});

// paper ":" model, from the fixed-scale fields when
// `Check_MashtabAnnotationPo` is set, else from the explicit annotation
// fields. The texts are taken as typed (trimmed of blanks): the result is a
// scale name the host looks up in its scale list, not a computed number.
std::string AnnotationScaleName(const CreationFieldTexts& fields);

// One control's enabled state.
struct ControlState {
  std::string_view control;  // the control's name
  bool enabled;
};

// `Option_SelectMashtab`: the fixed option enables `Text_MashtabBumaga`,
// `TXT_Dvoetoch` and `Text_MashtabModel` and disables
// `Command_GetMashtabRamka` and `Text_AutoMashtabRamka`; the other option
// does the reverse.
std::vector<ControlState> ScaleOptionStates(ScaleMode mode);

// `Check_MashtabAnnotation` enables or disables the two explicit
// annotation-scale fields.
std::vector<ControlState> AnnotationCheckStates(bool checked);

// `Check_CopyViewport` enables or disables `Picture_CopyViewport`, the
// panel that holds the six fields of the second viewport.
std::vector<ControlState> CopyViewportCheckStates(bool checked);

// `Command_GetMashtabRamka` after the user picked `distance` and answered
// the scale prompt with `answer`: distance / answer, an empty answer
// counting as "1". Returns nullopt when the field must stay as it is: a
// zero distance, an answer that reads as 0 (or is not a number), or a zero
// quotient.
std::optional<double> FrameLengthFromPick(double distance,
                                          std::string_view answer,
                                          bool decimal_comma);

}  // namespace lmt::layouts

#endif  // LMT_LAYOUTS_CREATION_PARAMETERS_H_
