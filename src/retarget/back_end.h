#pragma once

#include <memory>
#include <string>

#include "codegen/block_hook.h"
#include "program/slot.h"

namespace vorc {

/// A core of its own in place of the QLX processor: it takes the procedures' blocks and writes machine
/// code beside the source at the end of the run.
class BackEnd : public BlockHook {
 public:
  /// The line that tells of it at the start of the run, without its line end.
  virtual std::string InstalledLine() const = 0;
  /// Closes the last function, settles branches, writes every output and tells what was left out.
  virtual void Finish() = 0;
};

std::unique_ptr<BackEnd> MakeRiscvBackEnd(C_SLOT& slot, const std::string& source);
std::unique_ptr<BackEnd> MakeAarch64BackEnd(C_SLOT& slot, const std::string& source);

/// The back end of `slot.Target.core` for `source`, its listing open; none for the QLX processor.
std::unique_ptr<BackEnd> InstallBackEnd(C_SLOT& slot, const std::string& source);

}  // namespace vorc
