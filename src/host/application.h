// The CAD program's application object, the root of the object model, and its
// preferences (only the two the add-in touches, flattened: the object model's
// Preferences.Display.LayoutCreateViewport and
// Preferences.OpenSave.SaveAsType). A host implementation creates one CallGate
// per application and hands it to every object it makes, so refusing a member
// on the application's gate refuses it everywhere in that session. Gate names
// as in entity.h.
#ifndef LMT_HOST_APPLICATION_H_
#define LMT_HOST_APPLICATION_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/status.h"
#include "host/object.h"
#include "host/point.h"

namespace lmt::host {

// The application's options.
class Preferences : public Object {
 public:
  ~Preferences() override = default;

  // Display.LayoutCreateViewport: new layouts get a viewport.
  Result<bool> LayoutCreateViewport() const {
    return Gated("Preferences.LayoutCreateViewport",
                 [&] { return DoLayoutCreateViewport(); });
  }
  Status SetLayoutCreateViewport(bool create) {
    return Gated("Preferences.SetLayoutCreateViewport",
                 [&] { return DoSetLayoutCreateViewport(create); });
  }
  // OpenSave.SaveAsType: the default save format number.
  Result<int32_t> SaveAsType() const {
    return Gated("Preferences.SaveAsType", [&] { return DoSaveAsType(); });
  }
  Status SetSaveAsType(int32_t save_type) {
    return Gated("Preferences.SetSaveAsType",
                 [&] { return DoSetSaveAsType(save_type); });
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<bool> DoLayoutCreateViewport() const {
    return Unsupported("Preferences.LayoutCreateViewport");
  }
  virtual Status DoSetLayoutCreateViewport(bool /*create*/) {
    return Unsupported("Preferences.SetLayoutCreateViewport");
  }
  virtual Result<int32_t> DoSaveAsType() const {
    return Unsupported("Preferences.SaveAsType");
  }
  virtual Status DoSetSaveAsType(int32_t /*save_type*/) {
    return Unsupported("Preferences.SetSaveAsType");
  }
};

// The CAD program.
class Application : public Object {
 public:
  ~Application() override = default;

  // E.g. "24.0s (LMS Tech)"; nanoCAD "23.0.6360.6019".
  Result<std::string> Version() const {
    return Gated("Application.Version", [&] { return DoVersion(); });
  }
  Result<bool> Visible() const {
    return Gated("Application.Visible", [&] { return DoVisible(); });
  }
  Status SetVisible(bool visible) {
    return Gated("Application.SetVisible",
                 [&] { return DoSetVisible(visible); });
  }
  // The main window's title (used to activate it).
  Result<std::string> Caption() const {
    return Gated("Application.Caption", [&] { return DoCaption(); });
  }
  // kNotFound when no drawing is open.
  Result<DocumentPtr> ActiveDocument() const {
    return Gated("Application.ActiveDocument",
                 [&] { return DoActiveDocument(); });
  }
  Result<DocumentsPtr> Documents() const {
    return Gated("Application.Documents", [&] { return DoDocuments(); });
  }
  Result<PreferencesPtr> Preferences() const {
    return Gated("Application.Preferences", [&] { return DoPreferences(); });
  }
  // Creates an object served by the host; the add-in asks it only for
  // ObjectDBX documents ("ObjectDBX.AxDbDocument[.NN]").
  Result<DbxDocumentPtr> GetInterfaceObject(std::string_view prog_id) {
    return Gated("Application.GetInterfaceObject",
                 [&] { return DoGetInterfaceObject(prog_id); });
  }
  Status ZoomExtents() {
    return Gated("Application.ZoomExtents", [&] { return DoZoomExtents(); });
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<std::string> DoVersion() const {
    return Unsupported("Application.Version");
  }
  virtual Result<bool> DoVisible() const {
    return Unsupported("Application.Visible");
  }
  virtual Status DoSetVisible(bool /*visible*/) {
    return Unsupported("Application.SetVisible");
  }
  virtual Result<std::string> DoCaption() const {
    return Unsupported("Application.Caption");
  }
  virtual Result<DocumentPtr> DoActiveDocument() const {
    return Unsupported("Application.ActiveDocument");
  }
  virtual Result<DocumentsPtr> DoDocuments() const {
    return Unsupported("Application.Documents");
  }
  virtual Result<PreferencesPtr> DoPreferences() const {
    return Unsupported("Application.Preferences");
  }
  virtual Result<DbxDocumentPtr> DoGetInterfaceObject(
      std::string_view /*prog_id*/) {
    return Unsupported("Application.GetInterfaceObject");
  }
  virtual Status DoZoomExtents() {
    return Unsupported("Application.ZoomExtents");
  }
};

}  // namespace lmt::host

#endif  // LMT_HOST_APPLICATION_H_
