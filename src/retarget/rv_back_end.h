#pragma once

#include <string>

#include "base/text_writer.h"
#include "retarget/back_end.h"
#include "retarget/rv_coverage.h"
#include "retarget/rv_function_code.h"
#include "retarget/rv_select.h"

namespace vorc {

/// RV32 and RV64 code block by block, each statement for itself. What can't be translated is counted, told
/// and kept out of sight with its whole function.
class RvBackEnd : public BackEnd {
 public:
  /// Listing, image and map beside `source` are opened at once; one that can't be made is done without.
  RvBackEnd(C_SLOT& slot, const std::string& source);

  void GenerateBasicBlock(Procedure& procedure, BasicBlock& block) override;
  int RegisterBytes() const override { return unit_.word_bytes(); }
  std::string InstalledLine() const override;
  void Finish() override;

 private:
  void AllocateGlobals();
  void OpenFunction(Procedure& procedure);
  void CloseFunction();
  void Select(const Instruction& record);
  void CountFault();
  bool CallsAreDefined();
  void WriteUnit();
  void WriteObject();
  void CloseFiles();

  C_SLOT& slot_;
  std::string path_;  ///< of the listing; the other files have an extension more
  TextWriter listing_;
  TextWriter image_;
  TextWriter map_;
  RvUnitCode unit_;
  RvFunctionCode function_{unit_};
  RvSelector selector_{unit_, function_};
  RvCoverage coverage_;
  bool globals_done_ = false;
  bool started_ = false;
  int unhandled_ = 0;  ///< statements of the open function
};

}  // namespace vorc
