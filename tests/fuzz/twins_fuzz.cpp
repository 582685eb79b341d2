#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "compile_buffer.h"
#include "program_writer.h"

// Programs made of the input run on the register machine and by the walker. Both must print the same.

namespace {

/// What a run prints, on both of its streams.
std::string Printed(const std::string& program, vorc::Road road) {
  const int file = memfd_create("output", 0);
  const int kept[2] = {dup(1), dup(2)};
  dup2(file, 1);
  dup2(file, 2);
  vorc::fuzz::RunWithLargeStack([&] {
    vorc::fuzz::BufferCompilation compilation(program, true, road);
    compilation.Parse();
    compilation.RunMain();
  });
  dup2(kept[0], 1);
  dup2(kept[1], 2);
  close(kept[0]);
  close(kept[1]);
  std::string output(static_cast<size_t>(lseek(file, 0, SEEK_CUR)), '\0');
  const bool whole = pread(file, output.data(), output.size(), 0) == static_cast<ssize_t>(output.size());
  close(file);
  return whole ? output : "unread";
}

void Compare(const uint8_t* data, size_t size) {
  const std::string program = vorc::fuzz::ProgramWriter(data, size).Write();
  const std::string walked = Printed(program, vorc::Road::kWalker);
  const std::string run = Printed(program, vorc::Road::kMachine);
  if (walked == run) return;
  std::fprintf(stderr, "%s\n--- the walker:\n%s\n--- the machine:\n%s\n", program.c_str(), walked.c_str(),
               run.c_str());
  std::abort();
}

}  // namespace

// Stands for `count` random programs where the input is "random SEED COUNT".
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  unsigned seed = 0;
  unsigned count = 0;
  if (std::sscanf(text.c_str(), "random %u %u", &seed, &count) != 2) {
    Compare(data, size);
    return 0;
  }
  std::mt19937 random(seed);
  for (unsigned i = 0; i < count; ++i) {
    std::vector<uint8_t> bytes(100 + random() % 900);
    for (uint8_t& byte : bytes) byte = static_cast<uint8_t>(random());
    Compare(bytes.data(), bytes.size());
  }
  return 0;
}
