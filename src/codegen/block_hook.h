#pragma once

namespace vorc {

struct BasicBlock;
struct CodegenContext;
struct Procedure;

/// A back end that takes a procedure's blocks in place of colouring and emission. It gets each block
/// once its live ranges and their interference are known, in the order of the procedure's chain; a
/// change of procedure shows by the procedure itself.
class BlockHook {
 public:
  virtual ~BlockHook() = default;
  virtual void GenerateBasicBlock(Procedure& procedure, BasicBlock& block) = 0;
  /// Bytes of a register that holds a value. Values stay in registers, so what memory would cut is cut
  /// before it is assigned.
  virtual int RegisterBytes() const { return 8; }
  /// Called once when all procedures and data of the compilation have been walked.
  virtual void EndOfUnit(CodegenContext&) {}
  /// True if the right side of `&&` and `||` is to be jumped over where the left side decides.
  virtual bool WantsShortCircuit() const { return false; }
};

}  // namespace vorc
