// Where a batch run saves one processed drawing (`Option_SaveKuda`): beside
// the source, in a chosen folder, in a subfolder beside the source, or over
// the source. Existing results are never overwritten: the name is numbered
// plan, plan(1), plan(2), ... until no file of that name and the target
// extension exists. Only option 3 overwrites, and only the source itself.
//
// Paths are joined with std::filesystem and so with the platform's
// separator. The joins of the original were folder & "\" & name; a folder
// typed with a trailing backslash thus gave a doubled separator, which
// Windows reads as one. Joining with '/' here yields the same file.
#ifndef LMT_BATCH_SAVE_TARGET_H_
#define LMT_BATCH_SAVE_TARGET_H_

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "core/status.h"

namespace lmt::batch {

enum class SaveWhere : int {
  kBesideSource = 0,   // "Beside with file"
  kToFolder = 1,       // "To folder ..."
  kNewSubfolder = 2,   // "In new folder beside to file. Folder name:"
  kReplaceSource = 3,  // "Replace source file (.dwg only)"
};

struct SaveTargetOptions {
  SaveWhere where = SaveWhere::kBesideSource;
  std::string folder;     // `UniText_PutSaveKuda`, for kToFolder
  std::string subfolder;  // `UniText_NamePapkaSave`, for kNewSubfolder
};

struct SaveTargetPlan {
  // What `Saveas` receives: the numbered name without extension (the host
  // adds the one of its save type); for kReplaceSource the source path.
  std::filesystem::path target;
  // The subfolder to create before saving, when it does not exist yet.
  std::optional<std::filesystem::path> folder_to_create;
};

// Decides the target of one file without touching the disk; `exists` tells
// whether a path exists. `name` is the file-table name (the stem is the name
// without its last four characters, "plan.dxf" -> "plan"); `source_path` the
// full path; `extension` the target family without dot ("dwg").
// Fails with kInvalidArgument for kToFolder with an empty folder (the
// original would have saved to the root of the current drive).
Result<SaveTargetPlan> PlanSaveTarget(
    const SaveTargetOptions& options, std::string_view name,
    const std::filesystem::path& source_path, std::string_view extension,
    const std::function<bool(const std::filesystem::path&)>& exists);

// PlanSaveTarget on the real file system: creates the subfolder when the
// plan asks for it. Fails with kIOError when it cannot be created or when
// the target folder is not a folder (a typed folder that does not exist).
Result<std::filesystem::path> ResolveSaveTarget(
    const SaveTargetOptions& options, std::string_view name,
    const std::filesystem::path& source_path, std::string_view extension);

}  // namespace lmt::batch

#endif  // LMT_BATCH_SAVE_TARGET_H_
