#include <csetjmp>

#include "interp/interpreter.h"

namespace vorc {

// Gives back the texts that nothing refers to. It runs between statements, where whatever is still
// needed lies in the script's memory, among the operands, in one of the places named here, or, as an
// operand of an expression whose call is running, on the host's own stack and in its registers.
[[gnu::noinline]] void Interpreter::SweepTexts() {
  std::jmp_buf registers;
  setjmp(registers);
  memory_.SweepTexts([&](TextHeap& heap) {
    heap.KeepFrom(&registers, &registers + 1);
    heap.KeepFrom(__builtin_frame_address(0), host_stack_top_);
    heap.KeepFrom(operands_begin_, operands_ + kOperandsInHand);
    heap.KeepFrom(pending_.data(), pending_.data() + pending_.size());
    heap.Keep(return_reg_string_);
    for (const TextRing* ring : {&concat_ring_, &return_ring_}) {
      for (const TextSlot& slot : ring->slots) heap.Keep(slot.buffer);
    }
    for (size_t i = 0; i < slot_.SymbolRecords.count(); ++i)
      heap.Keep(StateOf(slot_.SymbolRecords.At(i)).text);
  });
}

}  // namespace vorc
