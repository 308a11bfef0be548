#include "layouts/run_settings.h"

#include "layouts/sheet_texts.h"

namespace lmt::layouts {

HostFamily FamilyOfHost(std::string_view host_name) {
  for (std::string_view name : {"AutoCAD", "BricsCAD", "GstarCAD", "ProgeCAD",
                                "IntelliCAD", "ZWCAD+"}) {
    if (NamesEqualNoCase(host_name, name)) return HostFamily::kAutoCad;
  }
  if (NamesEqualNoCase(host_name, "NanoCAD")) return HostFamily::kNanoCad;
  if (NamesEqualNoCase(host_name, "ZWCAD")) return HostFamily::kZwCad;
  return HostFamily::kNone;
}

CreationFieldTexts FieldTextsOf(const core::OknoSozdatLayout& w) {
  CreationFieldTexts f;
  f.scale_mode = w.option_select_mashtab.selected() == 1 ? ScaleMode::kFromWidth
                                                         : ScaleMode::kFixed;
  f.scale_paper = w.text_mashtab_bumaga.text();
  f.scale_model = w.text_mashtab_model.text();
  f.frame_paper_length = w.text_auto_mashtab_ramka.text();
  f.corner_x = w.text_coord_x.text();
  f.corner_y = w.text_coord_y.text();
  f.increment = w.text_ramka_prirachenie.text();
  f.viewport_layer = w.text_name_sloi_viewport.text();
  f.lock_display = w.check_zablokirovat_vyport.checked();
  f.plot_layout = w.check_oblast_list.checked();
  f.switch_on_at_once = w.check_initializacia.checked();
  f.delete_earlier_layouts = w.check_udalit_listi.checked();
  f.orientation = w.option_viewport_vert_gor.selected() == 1
                      ? FrameOrientation::kVertical
                      : FrameOrientation::kHorizontal;
  // The first option selects the extended rule, any other the standard.
  f.rotation_rule = w.option_viewport_rotate_start.selected() == 0
                        ? RotationRule::kExtended
                        : RotationRule::kStandard;
  f.rotate_by_block = w.check_viewport_rotate_block.checked();
  f.set_annotation_scale = w.check_mashtab_annotation.checked();
  f.annotation_as_viewport = w.check_mashtab_annotation_po.checked();
  f.annotation_paper = w.text_mashtab_annotation_bumaga.text();
  f.annotation_model = w.text_mashtab_annotation_model.text();
  f.copy_viewport = w.check_copy_viewport.checked();
  f.copy_scale_paper = w.text_copy_mashtab_bumaga.text();
  f.copy_scale_model = w.text_copy_mashtab_model.text();
  f.copy_corner_x = w.text_copy_coord_x.text();
  f.copy_corner_y = w.text_copy_coord_y.text();
  f.copy_width = w.text_copy_shirina.text();
  f.copy_height = w.text_copy_visota.text();
  return f;
}

RunSettings ReadRunSettings(const core::Windows& windows, bool decimal_comma) {
  RunSettings r;
  r.params = ReadCreationParameters(FieldTextsOf(windows.okno_sozdat_layout),
                                    decimal_comma);
  const int mode = windows.okno_lmt.option_vid_sozdat_layout.selected();
  r.mode = mode == 1   ? CreationMode::kPattern
           : mode == 2 ? CreationMode::kTemplateFile
                       : CreationMode::kEmpty;
  r.pattern_layout = windows.okno_lmt.uni_text_name_obrazec_layout.text();
  r.pattern_file =
      windows.okno_lmt.uni_text_name_obrazec_put_file_layout.text();

  const core::OknoDeistvie& d = windows.okno_deistvie;
  r.text.create = d.check_sozdat_text.checked();
  r.text.text = d.text_text_stroka.text();
  r.text.layer = d.text_text_sloi.text();
  r.text.style = d.text_stil_imia.text();
  r.text.font = d.text_stil_srift.text();
  r.text.height = FieldToNumber(d.text_text_visota.text(), decimal_comma);
  r.text.x = FieldToNumber(d.text_text_coord_x.text(), decimal_comma);
  r.text.y = FieldToNumber(d.text_text_coord_y.text(), decimal_comma);
  r.text.attachment_point =
      AttachmentPointFor(d.option_viravnivanie_text.selected());

  r.attributes.change = d.check_izmenit_atribut.checked();
  r.attributes.block_name = d.text_name_block.text();
  r.attributes.typed = {
      {{d.text_imia_atribut1.text(), d.text_value_atribut1.text()},
       {d.text_imia_atribut2.text(), d.text_value_atribut2.text()},
       {d.text_imia_atribut3.text(), d.text_value_atribut3.text()}}};

  const core::OknoVstavitObject& v = windows.okno_vstavit_object;
  r.insert.insert = windows.okno_lmt.check_vstavit_object.checked();
  r.insert.from_file = v.option_istochnik_vstavki.selected() == 1;
  r.insert.source = r.insert.from_file ? v.uni_text_put_file_vstavki.text()
                                       : v.uni_text_name_block_vstavki.text();
  r.insert.x = FieldToNumber(v.text_vstavka_coord_x.text(), decimal_comma);
  r.insert.y = FieldToNumber(v.text_vstavka_coord_y.text(), decimal_comma);
  // An empty or unreadable scale field inserts at full size, not at 0.
  const double scale =
      FieldToNumber(v.text_vstavka_mashtab.text(), decimal_comma);
  r.insert.scale = scale != 0 ? scale : 1;
  r.insert.rotation =
      FieldToNumber(v.text_vstavka_povorot.text(), decimal_comma);
  r.insert.layer = v.text_vstavka_sloi.text();
  r.page_setup = ReadPageSetupSettings(windows, decimal_comma);
  return r;
}

}  // namespace lmt::layouts
