#include "core/fixed_lists.h"

namespace lmt::core {

std::vector<std::string> HostKindList() {
  return {"AutoCAD",  "nanoCAD",  "ZWCAD",     "BricsCAD",
          "GstarCAD", "progeCAD", "IntelliCAD"};
}

std::vector<std::string> AutoCadReleaseList() {
  return {"Auto", "09", "10", "11", "12", "13", "14", "15",
          "16",   "17", "18", "19", "20", "21", "22"};
}

std::vector<std::string> SaveVersionList(std::string_view default_entry) {
  return {std::string(default_entry), "AutoCAD R12 DXF (*.dxf)",
          "AutoCAD R13 DWG (*.dwg)",  "AutoCAD R13 DXF (*.dxf)",
          "AutoCAD R14 DWG (*.dwg)",  "AutoCAD R14 DXF (*.dxf)",
          "AutoCAD 2000 DWG (*.dwg)", "AutoCAD 2000 DXF (*.dxf)",
          "AutoCAD 2004 DWG (*.dwg)", "AutoCAD 2004 DXF (*.dxf)",
          "AutoCAD 2007 DWG (*.dwg)", "AutoCAD 2007 DXF (*.dxf)",
          "AutoCAD 2010 DWG (*.dwg)", "AutoCAD 2010 DXF (*.dxf)",
          "AutoCAD 2013 DWG (*.dwg)", "AutoCAD 2013 DXF (*.dxf)",
          "AutoCAD 2018 DWG (*.dwg)", "AutoCAD 2018 DXF (*.dxf)",
          "AutoCAD 2021 DWG (*.dwg)", "AutoCAD 2021 DXF (*.dxf)"};
}

std::vector<std::string> ColorList() {
  std::vector<std::string> list = {"ByLayer", "ByBlock"};
  for (int color = 1; color <= 254; ++color)
    list.push_back(std::to_string(color));
  return list;
}

std::vector<std::string> LinetypeList() { return {"ByLayer", "ByBlock"}; }

std::vector<std::string> LineweightList() {
  std::vector<std::string> list = {"ByLayer", "ByBlock", "Default"};
  const std::string_view weights =
      "0.00:0.05:0.09:0.13:0.15:0.18:0.20:0.25:0.30:0.35:0.40:0.50:0.53:0.60:"
      "0.70:0.80:0.90:1.00:1.06:1.20:1.40:1.58:2.00:2.11";
  size_t pos = 0;
  while (pos <= weights.size()) {
    size_t colon = weights.find(':', pos);
    if (colon == std::string_view::npos) colon = weights.size();
    list.emplace_back(weights.substr(pos, colon - pos));
    pos = colon + 1;
  }
  return list;
}

std::vector<std::string> ImportFormatList() {
  return {".PDF", ".DXF", ".SAT", ".WMF", ".DGN", ".IGS", ".STP"};
}

std::vector<std::string> PdfRotationList() { return {"0", "90", "180", "270"}; }

std::vector<std::string> SaveAsKindList() { return {"Auto", "DWG", "DXF"}; }

}  // namespace lmt::core
