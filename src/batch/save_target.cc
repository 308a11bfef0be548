#include "batch/save_target.h"

#include <system_error>

#include "batch/paths.h"
#include "core/text_case.h"

namespace lmt::batch {
namespace {

namespace fs = std::filesystem;

// A bound on the numbering, so that a file system that reports every name
// as taken cannot hold the run forever.
constexpr int kMaxNumber = 100000;

}  // namespace

Result<SaveTargetPlan> PlanSaveTarget(
    const SaveTargetOptions& options, std::string_view name,
    const fs::path& source_path, std::string_view extension,
    const std::function<bool(const fs::path&)>& exists) {
  SaveTargetPlan plan;
  if (options.where == SaveWhere::kReplaceSource) {
    plan.target = source_path;
    return plan;
  }
  fs::path folder = source_path.parent_path();
  if (options.where == SaveWhere::kToFolder) {
    if (options.folder.empty()) {
      return Status::InvalidArgument("no folder to save into");
    }
    folder = PathFromUtf8(options.folder);
  } else if (options.where == SaveWhere::kNewSubfolder) {
    // An empty folder name joins to the source's own folder, as before.
    if (!options.subfolder.empty()) {
      folder /= PathFromUtf8(options.subfolder);
      if (!exists(folder)) plan.folder_to_create = folder;
    }
  }
  std::string stem = core::DropLastCodePoints(name, 4);
  std::string candidate = stem;
  for (int k = 1;; ++k) {
    fs::path taken =
        folder / PathFromUtf8(candidate + "." + std::string(extension));
    if (!exists(taken)) break;
    if (k > kMaxNumber) return Status::IOError("no free name for " + stem);
    candidate = stem + "(" + std::to_string(k) + ")";
  }
  plan.target = folder / PathFromUtf8(candidate);
  return plan;
}

Result<fs::path> ResolveSaveTarget(const SaveTargetOptions& options,
                                   std::string_view name,
                                   const fs::path& source_path,
                                   std::string_view extension) {
  auto exists = [](const fs::path& p) {
    std::error_code ec;
    return fs::exists(p, ec);
  };
  Result<SaveTargetPlan> plan =
      PlanSaveTarget(options, name, source_path, extension, exists);
  if (!plan.ok()) return plan.status();
  if (plan->folder_to_create) {
    std::error_code ec;
    fs::create_directories(*plan->folder_to_create, ec);
    if (ec) {
      return Status::IOError("cannot create folder " +
                             PathToUtf8(*plan->folder_to_create) + ": " +
                             ec.message());
    }
  }
  // A file in the folder's place, or a typed folder that is not there,
  // would make `Saveas` fail unseen; say so instead.
  if (options.where != SaveWhere::kReplaceSource) {
    std::error_code ec;
    if (!fs::is_directory(plan->target.parent_path(), ec)) {
      return Status::IOError("not a folder: " +
                             PathToUtf8(plan->target.parent_path()));
    }
  }
  return plan->target;
}

}  // namespace lmt::batch
