#pragma once

#include "codegen/procedure.h"

// The passes over a procedure's blocks, in the order in which they run. Each reads what the one before
// left, leaves its own result in the procedure, and tells its course in the analysis log.

namespace vorc {

/// Numbers the instructions and writes them to the analysis log and to the verification file.
void PrintFlattenedThreeAddressCode(Procedure& procedure);
/// Head and foot of the verification file.
void CreateThreeAddressSamplesForVerificationFileHeader(CodegenContext& context, std::string_view source,
                                                        std::string_view assembly);
void end_write_tac_sample(CodegenContext& context);

/// Gives every variable of the procedure a number, and writes the input of outside analysers.
void CreateVariableNameList(Procedure& procedure);
void PrintVariableNameList(Procedure& procedure);

void print_basic_blocks(Procedure& procedure);
void DumpSuccessorsPredecessors(Procedure& procedure);

/// DEF and USE of one block.
void three_address_code_identify_def_and_use_vars(Procedure& procedure, BasicBlock& block);
/// IN and OUT of all blocks.
void ThreeAddress_PerformVariableLivenessAnalysis(Procedure& procedure);
void print_in_out_vars_summary(Procedure& procedure);

/// Dominators and the dominator tree, for the log alone.
void CreateDominance(Procedure& procedure);

/// Live ranges of all blocks, their interference, and then either the back end's hook or colouring and
/// emission, block by block. False if a block is too large.
bool CreateLivenessRange(Procedure& procedure);
/// Every pair of ranges of a block that overlap. False if there are too many.
bool FindInterference(Procedure& procedure, BasicBlock& block);
/// Colours a block's ranges with the general registers.
void GregChaitin_1982_color(Procedure& procedure, BasicBlock& block);
/// Writes a block's code.
void EmitBlock(Procedure& procedure, BasicBlock& block);

}  // namespace vorc
