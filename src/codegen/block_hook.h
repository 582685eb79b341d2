#pragma once

namespace vorc {

struct BasicBlock;
struct Procedure;

/// A back end that takes a procedure's blocks in place of colouring and emission. It gets each block
/// once its live ranges and their interference are known, in the order of the procedure's chain; a
/// change of procedure shows by the procedure itself.
class BlockHook {
 public:
  virtual ~BlockHook() = default;
  virtual void GenerateBasicBlock(Procedure& procedure, BasicBlock& block) = 0;
};

}  // namespace vorc
