#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "frontend/parser.h"
#include "frontend/scanner.h"
#include "program/layout.h"

namespace vorc {

/// Parses a text, in compile mode or as a script, without anything behind the parser.
class ParsedSource : public ParseServices {
 public:
  explicit ParsedSource(const std::string& text, int cpu_size = 64, bool script = false)
      : slot(std::make_unique<C_SLOT>()), scanner(*slot) {
    slot->Target.cpu_size = slot->Target.address_size = cpu_size;
    slot->Target.script = script;
    slot->Display.set_quiet(true);
    slot->Services = this;
    scanner.LoadSrcFromBuffer("test", text);
    testing::internal::CaptureStdout();
    good = scanner.OpenSourceCodeFile("test") && Parser(*slot, scanner).ParseCsyntax();
    messages = testing::internal::GetCapturedStdout();
  }

  void AllocateData(SYM_REC*) override {}
  void InitializeData(SYM_REC*) override {}
  void RunStatement(STATEMENT_BLOCK*) override {}
  int64_t RoomOf(const SYM_REC*) override { return kLargestType; }
  bool IsBuiltin(const Name*) override { return false; }

  SYM_REC* Variable(const std::string& name) {
    return FindInScope(*slot, &slot->Globals, slot->Names.Intern(name)).Symbol();
  }
  FUNCPROTO_REC* Function(const std::string& name) {
    return FindFunction(*slot, &slot->Globals, slot->Names.Intern(name));
  }
  /// The chain of a function's first statement, as words.
  std::string Chain(const std::string& function) {
    const PROC_TABLE* body = Function(function)->ProcBody;
    for (const STATEMENT_BLOCK* at = body->Statements.First; at != nullptr; at = at->Next) {
      if (at->Expression != nullptr) return Words(at->Expression);
    }
    return "";
  }

  static std::string Words(const EXPR_NODE* head) {
    std::string text;
    for (const EXPR_NODE* node = head; node != nullptr; node = node->Next) {
      if (!text.empty()) text += ' ';
      const bool named = node->Token == Tok::IDENTIFIER || node->Token == Tok::NUMBER;
      text += named ? std::string(node->Literal) : std::string(TokenName(node->Token));
    }
    return text;
  }

  std::unique_ptr<C_SLOT> slot;
  Scanner scanner;
  bool good = false;
  std::string messages;
};

}  // namespace vorc
