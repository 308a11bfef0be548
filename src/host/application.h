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
    if (Status s = Enter("Preferences.LayoutCreateViewport"); !s.ok()) return s;
    return DoLayoutCreateViewport();
  }
  Status SetLayoutCreateViewport(bool create) {
    if (Status s = Enter("Preferences.SetLayoutCreateViewport"); !s.ok())
      return s;
    return DoSetLayoutCreateViewport(create);
  }
  // OpenSave.SaveAsType: the default save format number.
  Result<int32_t> SaveAsType() const {
    if (Status s = Enter("Preferences.SaveAsType"); !s.ok()) return s;
    return DoSaveAsType();
  }
  Status SetSaveAsType(int32_t save_type) {
    if (Status s = Enter("Preferences.SetSaveAsType"); !s.ok()) return s;
    return DoSetSaveAsType(save_type);
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<bool> DoLayoutCreateViewport() const;
  virtual Status DoSetLayoutCreateViewport(bool create);
  virtual Result<int32_t> DoSaveAsType() const;
  virtual Status DoSetSaveAsType(int32_t save_type);
};

// The CAD program.
class Application : public Object {
 public:
  ~Application() override = default;

  // E.g. "24.0s (LMS Tech)"; nanoCAD "23.0.6360.6019".
  Result<std::string> Version() const {
    if (Status s = Enter("Application.Version"); !s.ok()) return s;
    return DoVersion();
  }
  Result<bool> Visible() const {
    if (Status s = Enter("Application.Visible"); !s.ok()) return s;
    return DoVisible();
  }
  Status SetVisible(bool visible) {
    if (Status s = Enter("Application.SetVisible"); !s.ok()) return s;
    return DoSetVisible(visible);
  }
  // The main window's title (used to activate it).
  Result<std::string> Caption() const {
    if (Status s = Enter("Application.Caption"); !s.ok()) return s;
    return DoCaption();
  }
  // kNotFound when no drawing is open.
  Result<DocumentPtr> ActiveDocument() const {
    if (Status s = Enter("Application.ActiveDocument"); !s.ok()) return s;
    return DoActiveDocument();
  }
  Result<DocumentsPtr> Documents() const {
    if (Status s = Enter("Application.Documents"); !s.ok()) return s;
    return DoDocuments();
  }
  Result<PreferencesPtr> Preferences() const {
    if (Status s = Enter("Application.Preferences"); !s.ok()) return s;
    return DoPreferences();
  }
  // Creates an object served by the host; the add-in asks it only for
  // ObjectDBX documents ("ObjectDBX.AxDbDocument[.NN]").
  Result<DbxDocumentPtr> GetInterfaceObject(std::string_view prog_id) {
    if (Status s = Enter("Application.GetInterfaceObject"); !s.ok()) return s;
    return DoGetInterfaceObject(prog_id);
  }
  Status ZoomExtents() {
    if (Status s = Enter("Application.ZoomExtents"); !s.ok()) return s;
    return DoZoomExtents();
  }

 protected:
  using Object::Object;

  // Hosts override what they support; the rest answers kNotSupported.
  virtual Result<std::string> DoVersion() const;
  virtual Result<bool> DoVisible() const;
  virtual Status DoSetVisible(bool visible);
  virtual Result<std::string> DoCaption() const;
  virtual Result<DocumentPtr> DoActiveDocument() const;
  virtual Result<DocumentsPtr> DoDocuments() const;
  virtual Result<PreferencesPtr> DoPreferences() const;
  virtual Result<DbxDocumentPtr> DoGetInterfaceObject(std::string_view prog_id);
  virtual Status DoZoomExtents();
};

}  // namespace lmt::host

#endif  // LMT_HOST_APPLICATION_H_
