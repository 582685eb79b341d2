#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "program/slot.h"
#include "program/tokens.h"

namespace vorc {

/// A place in the token stream, to see whether the scanner has moved.
using ScanPosition = uint64_t;

/// Delivers the tokens of a source file, with includes, conditionals and macros worked in. One
/// token is current at a time; a saved state brings back any earlier one.
class Scanner {
 private:
  struct FileFrame;

  /// A macro's replacement, or an actual argument's tokens, that is being delivered.
  struct MacroFrame {
    const DEFINE_ITEM* Item;   ///< the next one
    const DEFINE_REC* Define;  ///< null for an argument's tokens
    const DEFINE_ITEM* const* Arguments;
  };
  /// The macros that are open, the innermost last. A copy takes only those.
  struct MacroStack {
    static constexpr int kDeepest = 33;

    MacroStack() {}
    MacroStack(const MacroStack& other) { *this = other; }
    MacroStack& operator=(const MacroStack& other) {
      Depth = other.Depth;
      std::copy_n(other.Frames, Depth, Frames);
      return *this;
    }
    bool empty() const { return Depth == 0; }
    bool full() const { return Depth == kDeepest; }

    int Depth = 0;
    MacroFrame Frames[kDeepest];
  };

  // Everything that SaveToken keeps. Frames are never changed once something stands on them, so a
  // state stays good whatever is read after it.
  struct State {
    ScanPosition Position = 0;  ///< counts the tokens that were delivered
    Tok Token = Tok::NOTOKEN;
    std::string_view Word;
    Name* WordName = nullptr;
    bool FromMacro = false;
    bool BehindDollar = false;
    std::string_view Blanks;
    FileFrame* Frame = nullptr;
    const char* Cursor = nullptr;
    const char* LineEnd = nullptr;
    bool EndOfFile = false;
    long LineNumber = 0;
    MacroStack Macros;
  };

 public:
  using SaveTokenRecord = State;

  explicit Scanner(C_SLOT& slot) : slot_(slot) {}

  /// Opens the main source and reads its first token. False if it can't be read.
  bool OpenSourceCodeFile(const std::string& name);
  /// Forgets where it stands; what was defined stays. The next file that is opened is a main source.
  void StartAnew() { now_ = State(); }
  /// Takes a text as the content of a file, which is then not opened.
  void AddSource(const std::string& path, std::string text);
  /// Names a text that is compiled, or included, as if it were a file.
  void LoadSrcFromBuffer(const std::string& name, std::string_view text);

  Tok Token() const { return now_.Token; }
  /// Spelling of the current token; of a string, its converted text.
  std::string_view Word() const { return now_.Word; }
  std::string WordText() const { return std::string(now_.Word); }
  /// The current token for a message, clipped.
  std::string ClipTok() const;
  /// The current word as a name; null unless it is an identifier or a reserved word.
  Name* WordName() const { return now_.WordName; }
  bool TokenIn(const TokenList& list) const { return list.Has(now_.Token); }
  /// True if the current token touches its predecessor.
  bool Touching() const { return now_.Blanks.empty(); }
  long LineNumber() const { return now_.LineNumber; }
  /// The line of the current token.
  SourceLine Place() const { return slot_.Place; }
  /// A value that differs whenever the scanner has moved on; a restored state brings it back.
  ScanPosition Position() const { return now_.Position; }

  /// Next token, macros expanded, comments skipped; delivers line ends.
  void GetComboTokenDonotSkipEol();
  /// Next token, macros expanded, comments and line ends skipped.
  void GetComboTokenSkipEol();

  SaveTokenRecord SaveToken() const { return now_; }
  void RestoreToken(const SaveTokenRecord& saved);

  /// Works off the directive whose `#` is current and reads the token behind it.
  void ParsePound();

  /// Value of the character constant whose opening quote is current; the closing quote becomes
  /// current. -1 after an error.
  int64_t ParseSingleQuote();

  /// Keeps the lines of a hardware block and moves behind the one that holds `rtlend`. False at the
  /// end of the file.
  bool ReadRtlBlock();

  /// Reports conditionals that are still open at the end of the main file.
  void ExaminePreProcessorStack();
  /// How many files enclose the current one.
  int IncludeDepth() const;

 private:
  using SourceText = SourceTexts::Source;
  struct IfEntry {
    Tok Token;
    bool Value;
    SourceLine Line;
  };
  struct FileFrame {
    const SourceText* Source = nullptr;
    FileFrame* Parent = nullptr;
    int Depth = 0;
    bool Reported = false;
    std::vector<IfEntry> Ifs;
    // Where to go on once the files on top of this one have ended.
    const char* Cursor = nullptr;
    const char* LineEnd = nullptr;
    long LineNumber = 0;
  };

  // scanner.cpp
  void GetToken();
  void ScanBlanks();
  void ScanWord();
  void ScanNumber();
  void ScanHexNumber(const char* start);
  void ScanFraction(const char* start);
  void ScanOthers();
  void ScanString();
  void SetToken(Tok token, const char* start, const char* end);
  void SetEndOfString();
  Tok ReserveWord(Name* name) const;
  bool SkipComment();
  void ParseBlockCommentBegin();
  void GetTokenSkipComments();
  int64_t ScanEscape();
  std::string_view ScanQuotedWord();

  // source_files.cpp
  const SourceText* LoadFile(const std::string& path);
  const SourceText* FindBufferFile(const std::string& name) const;
  void PushFile(const SourceText* source);
  bool PopFile();
  bool ReadLine();
  void UpdatePlace();
  void ParseInclude();
  bool ReadIncludeName(std::string* name);
  void CheckAfterInclude();
  bool OpenIncludeFile(const std::string& name);
  void ReportOpenIfs(FileFrame* frame);
  void LogIfStack(const FileFrame& frame);

  // macros.cpp
  bool GetDefineToken();
  void DeliverItem(const DEFINE_ITEM* item);
  bool PushMacroFrame(const MacroFrame& frame);
  void RawToken();
  void RawTokenSkipEol();
  bool ExpandMacro(const DEFINE_REC* define);
  bool ParseMacroCall(const DEFINE_REC* define, const DEFINE_ITEM*** arguments);
  DEFINE_ITEM* CollectArgument();
  DEFINE_ITEM* NewItem();
  void ParseDefine();
  bool ParseFormalParameters(DEFINE_REC* define);
  void ParseReplacement(DEFINE_REC* define);
  void ParseUndef();

  // directives.cpp
  void SkipToEndOfLine();
  void ParsePreProcessIfs(Tok directive);
  void ParsePreProcessElif();
  void ParsePreProcessElse();
  void ParsePreProcessEndif();
  bool PushIf(Tok directive, bool value);
  bool EvaluateCondition(Tok directive) const;
  int64_t FindDefineNumber(const Name* name) const;
  bool BranchIsOpen() const;
  void SkipGroup(bool to_endif_only);
  Tok DirectiveOfLine();
  void SkipBlanksAndComments();

  C_SLOT& slot_;
  State now_;
  std::unordered_map<std::string, const SourceText*> files_by_path_;
  std::vector<const SourceText*> buffers_;
  std::deque<FileFrame> frames_;
  size_t macro_tokens_ = 0;  ///< tokens delivered by macros since the last one from a file
  size_t all_macro_tokens_ = 0;
  int opened_files_ = 0;
};

}  // namespace vorc
