#include "host/application.h"

namespace lmt::host {

Result<bool> Preferences::DoLayoutCreateViewport() const {
  return Unsupported("Preferences.LayoutCreateViewport");
}

Status Preferences::DoSetLayoutCreateViewport(bool /*create*/) {
  return Unsupported("Preferences.SetLayoutCreateViewport");
}

Result<int32_t> Preferences::DoSaveAsType() const {
  return Unsupported("Preferences.SaveAsType");
}

Status Preferences::DoSetSaveAsType(int32_t /*save_type*/) {
  return Unsupported("Preferences.SetSaveAsType");
}

Result<std::string> Application::DoVersion() const {
  return Unsupported("Application.Version");
}

Result<bool> Application::DoVisible() const {
  return Unsupported("Application.Visible");
}

Status Application::DoSetVisible(bool /*visible*/) {
  return Unsupported("Application.SetVisible");
}

Result<std::string> Application::DoCaption() const {
  return Unsupported("Application.Caption");
}

Result<DocumentPtr> Application::DoActiveDocument() const {
  return Unsupported("Application.ActiveDocument");
}

Result<DocumentsPtr> Application::DoDocuments() const {
  return Unsupported("Application.Documents");
}

Result<PreferencesPtr> Application::DoPreferences() const {
  return Unsupported("Application.Preferences");
}

Result<DbxDocumentPtr> Application::DoGetInterfaceObject(
    std::string_view /*prog_id*/) {
  return Unsupported("Application.GetInterfaceObject");
}

Status Application::DoZoomExtents() {
  return Unsupported("Application.ZoomExtents");
}

}  // namespace lmt::host
