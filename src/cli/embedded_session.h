// The CAD program of the command line: the embedded host over the DXF
// engine, playing the host kind chosen in the main window
// (VersiaCAD.VersiaCAD), with the command's drawing open as the active
// document, and a host::Session over it that the add-in's commands run in.
//
// EmbeddedRuntime answers every program identifier with that one
// application, so the connection finds it whatever kind and release the
// windows ask for; nothing is ever started.
//
// Usage in a command:
//   Result<std::unique_ptr<EmbeddedSession>> run =
//       EmbeddedSession::Open(context, context.options.args[0]);
//   if (!run.ok()) return ReportFileError(context, run.status());  // exit 3
//   (*run)->user().QueueTemplatePick();
//   frames::FrameCommands commands((*run)->session(), state, namer);
//
// A command that writes the drawing opens it with OpenToSave and ends with
// SaveOutput, the one save path of the command line (cli/drawing_output.h).
#ifndef LMT_CLI_EMBEDDED_SESSION_H_
#define LMT_CLI_EMBEDDED_SESSION_H_

#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "cli/cli_user.h"
#include "cli/registry.h"
#include "core/status.h"
#include "host/automation_runtime.h"
#include "host/host_kind.h"
#include "host/object_model.h"
#include "host/session.h"

namespace lmt::cli {

class EmbeddedRuntime : public host::AutomationRuntime {
 public:
  explicit EmbeddedRuntime(host::ApplicationPtr application)
      : application_(std::move(application)) {}

  Result<host::ApplicationPtr> GetObject(std::string_view) override {
    return application_;
  }
  Result<host::ApplicationPtr> CreateObject(std::string_view) override {
    return application_;
  }

 private:
  host::ApplicationPtr application_;
};

class EmbeddedSession {
 public:
  // Starts the embedded host of the main window's kind (AutoCAD when the
  // list holds no valid kind) and opens `drawing`. IOError or Corruption,
  // with the file and, for a malformed drawing, the line and why, when it
  // cannot be read.
  static Result<std::unique_ptr<EmbeddedSession>> Open(
      CommandContext& context, const std::string& drawing);

  // Open for a command that writes the drawing to `out`: also an IOError
  // when OUT cannot be written (checked before anything runs), and the
  // messages of success wait until SaveOutput has written OUT.
  static Result<std::unique_ptr<EmbeddedSession>> OpenToSave(
      CommandContext& context, const std::string& drawing,
      const std::string& out);

  EmbeddedSession(const EmbeddedSession&) = delete;
  EmbeddedSession& operator=(const EmbeddedSession&) = delete;
  // Writes the messages still held (a command that stopped before saving
  // shows them as it would have without holding).
  ~EmbeddedSession();

  // Saves the drawing as the OUT of OpenToSave in the release of the drawing
  // read (SaveDrawing); then writes the held messages, or on failure drops
  // them, so that no success is claimed for a file not written.
  // REQUIRES: opened with OpenToSave.
  Status SaveOutput();

  // Saves the drawing as the set of files `targets` instead of OUT, each a
  // copy in the release of the drawing read, file i without the layouts
  // named in `without[i]` (the other files' new layouts). Either every file
  // is written or none is (WriteFileSet); OUT itself is not written. Then
  // the held messages as SaveOutput.
  // REQUIRES: opened with OpenToSave; targets.size() == without.size().
  Status SaveOutputSet(const std::vector<std::string>& targets,
                       const std::vector<std::vector<std::string>>& without);

  // Layouts need DXF 2000: an R13 or R14 drawing is converted in memory,
  // says so in one line on `err` (unless `quiet`), and is saved as DXF
  // 2000. NotSupported, naming the drawing, for R12, which is not
  // converted. Call it right after opening, before anything reads the
  // drawing through the host.
  Status PrepareForLayouts(std::ostream& err, bool quiet);

  CliUser& user() { return user_; }
  host::Session& session() { return session_; }
  const host::ApplicationPtr& application() const { return application_; }
  // The drawing opened (also the active document after Connect()).
  const host::DocumentPtr& document() const { return document_; }
  host::HostKind kind() const { return kind_; }

 private:
  EmbeddedSession(CommandContext& context, host::HostKind kind);

  host::HostKind kind_;
  bool exits_after_run_;
  CliUser user_;
  host::ApplicationPtr application_;
  EmbeddedRuntime runtime_;
  host::Session session_;
  host::DocumentPtr document_;
  std::string drawing_;
  std::string out_;  // empty: the command writes no drawing
  // The release the output is written in when the drawing's own is older
  // (empty: its own).
  std::string release_at_least_;
};

// Writes "layomat: MESSAGE" for a drawing that could not be read or written
// and returns kExitFileError.
int ReportFileError(CommandContext& context, const Status& status);

}  // namespace lmt::cli

#endif  // LMT_CLI_EMBEDDED_SESSION_H_
