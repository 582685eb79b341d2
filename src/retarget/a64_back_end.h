#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "base/text_writer.h"
#include "retarget/a64_function.h"
#include "retarget/a64_unit.h"
#include "retarget/back_end.h"

namespace vorc {

/// AArch64 code of one compilation: a flat image that runs wherever it is mapped, and a listing of what
/// became of each statement.
class A64BackEnd : public BackEnd {
 public:
  /// Opens the listing `<source>.a64.lst` and removes the image of an earlier run.
  A64BackEnd(const C_SLOT& slot, const std::string& source);

  std::string InstalledLine() const override;
  void GenerateBasicBlock(Procedure& procedure, BasicBlock& block) override;
  void EndOfUnit(CodegenContext& context) override;
  bool WantsShortCircuit() const override { return true; }
  void Finish() override;

 private:
  void OpenFunction(Procedure& procedure);
  void CloseFunction();
  void Count(const Procedure& procedure, const Instruction& instruction, bool selected);
  void ListData();
  bool WriteImage(const std::string& path) const;
  void ReportRefused();

  const C_SLOT& slot_;
  const std::string listing_path_;
  const std::string image_path_;
  const std::string copy_path_;
  TextWriter listing_;
  A64Unit unit_;
  std::unique_ptr<A64Function> function_;
  int refused_in_function_ = 0;
  bool data_collected_ = false;
  int functions_ = 0;
  int blocks_ = 0;
  int selected_ = 0;
  int refused_ = 0;
  std::map<Tok, int> refused_by_operation_;
};

}  // namespace vorc
