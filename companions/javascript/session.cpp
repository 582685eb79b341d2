#include "javascript/session.h"

#include <cmath>
#include <ctime>

#include "javascript/text.h"

namespace vorc {

namespace {

constexpr int64_t kNanosecondsPerMs = 1'000'000;
constexpr int64_t kNanosecondsPerSecond = 1'000'000'000;
constexpr double kLargestExact = 9007199254740992.0;  // 2^53

int64_t Now() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return int64_t{now.tv_sec} * kNanosecondsPerSecond + now.tv_nsec;
}

duk_ret_t EncodeTop(duk_context* context, void*) {
  duk_json_encode(context, -1);
  return 1;
}

// Replaces the top by its text: JSON for an object, if it has one.
void MakeText(duk_context* context) {
  if (duk_is_object(context, -1) && !duk_is_function(context, -1)) {
    duk_dup_top(context);
    const bool encoded = duk_safe_call(context, EncodeTop, nullptr, 1, 1) == DUK_EXEC_SUCCESS;
    if (encoded && duk_is_string(context, -1)) return duk_remove(context, -2);
    duk_pop(context);
  }
  duk_safe_to_string(context, -1);
}

std::string TopAsText(duk_context* context) {
  duk_size_t size = 0;
  const char* text = duk_get_lstring(context, -1, &size);
  return text == nullptr ? "" : FromInterpreter({text, size});
}

Session& SessionOf(duk_context* context) {
  duk_memory_functions functions{};
  duk_get_memory_functions(context, &functions);
  return *static_cast<Session*>(functions.udata);
}

duk_ret_t PrintArguments(duk_context* context) {
  Session& session = SessionOf(context);
  for (duk_idx_t i = 0, count = duk_get_top(context); i < count; ++i) {
    duk_dup(context, i);
    MakeText(context);
    if (i > 0) session.Print(" ");
    session.Print(TopAsText(context));
    duk_pop(context);
  }
  session.Print("\n");
  return 0;
}

// Makes the top a property of the object below it that doesn't show up among the variables.
void DefineHidden(duk_context* context, const char* name) {
  duk_push_string(context, name);
  duk_insert(context, -2);
  duk_def_prop(context, -3,
               DUK_DEFPROP_HAVE_VALUE | DUK_DEFPROP_SET_WRITABLE | DUK_DEFPROP_SET_CONFIGURABLE |
                   DUK_DEFPROP_CLEAR_ENUMERABLE);
}

void DefineOutput(duk_context* context) {
  duk_push_global_object(context);
  duk_push_c_function(context, PrintArguments, DUK_VARARGS);
  DefineHidden(context, "print");
  duk_push_object(context);
  for (const char* name : {"log", "info", "warn", "error", "debug"}) {
    duk_push_c_function(context, PrintArguments, DUK_VARARGS);
    duk_put_prop_string(context, -2, name);
  }
  DefineHidden(context, "console");
  duk_get_prop_string(context, -1, "performance");
  DefineHidden(context, "performance");
}

int32_t KindOfTop(duk_context* context) {
  switch (duk_get_type(context, -1)) {
    case DUK_TYPE_UNDEFINED:
    case DUK_TYPE_NULL: return VLANG_NONE;
    case DUK_TYPE_BOOLEAN: return VLANG_BOOL;
    case DUK_TYPE_NUMBER: {
      const double number = duk_get_number(context, -1);
      return std::trunc(number) == number && std::fabs(number) <= kLargestExact ? VLANG_INT : VLANG_REAL;
    }
    case DUK_TYPE_OBJECT: return duk_is_function(context, -1) ? VLANG_TEXT : VLANG_LIST;
    default: return VLANG_TEXT;
  }
}

// The declarations of a strict text are its own when it is evaluated, so it is run as a program.
duk_uint_t CompileFlags(std::string_view text) {
  const size_t start = text.find_first_not_of(" \t\r\n");
  const std::string_view head = start == std::string_view::npos ? "" : text.substr(start, 12);
  return head == "\"use strict\"" || head == "'use strict'" ? 0 : DUK_COMPILE_EVAL;
}

}  // namespace

Session::Session() : context_(duk_create_heap(nullptr, nullptr, nullptr, this, nullptr)) {
  if (context_ == nullptr || Protected([this] { DefineOutput(context_); })) return;
  duk_destroy_heap(context_);
  context_ = nullptr;
}

Session::~Session() {
  if (context_ != nullptr) duk_destroy_heap(context_);
}

// Does some work that may fail in the interpreter, within the limit. After a failure its error is on the
// stack, otherwise nothing; values that it is given are gone either way. The work must own nothing that wants
// to be destroyed: a failure is a jump.
template <typename Work>
bool Session::Protected(Work work, duk_idx_t given) {
  expired_ = false;
  deadline_ns_ = limit_ms() > 0 ? Now() + limit_ms() * kNanosecondsPerMs : 0;
  const auto call = [](duk_context*, void* data) -> duk_ret_t {
    (*static_cast<Work*>(data))();
    return 0;
  };
  const bool done = duk_safe_call(context_, call, &work, given, 1) == DUK_EXEC_SUCCESS;
  deadline_ns_ = 0;
  if (done) duk_pop(context_);
  return done;
}

// The same where nobody asks for the error.
template <typename Work>
bool Session::Try(Work work) {
  const bool done = Protected(work);
  if (!done) duk_pop(context_);
  return done;
}

bool Session::Expired() {
  if (deadline_ns_ != 0 && Now() >= deadline_ns_) expired_ = true;
  return expired_;
}

void Session::Print(std::string_view text) {
  if (answer_ != nullptr) answer_->Append(text);
}

// Takes the error from the stack.
std::string Session::FailureText() {
  if (expired_) {
    duk_pop(context_);
    return LimitReached(limit_ms());
  }
  std::string reason = "unknown error";
  int32_t line = 0;
  const auto read = [&] {
    duk_dup_top(context_);
    duk_safe_to_string(context_, -1);
    reason = TopAsText(context_);
    duk_pop(context_);
    if (!duk_is_error(context_, -1)) return;
    duk_get_prop_string(context_, -1, "lineNumber");
    line = duk_get_int(context_, -1);
  };
  if (!Protected(read, 1)) duk_pop(context_);
  if (expired_) return LimitReached(limit_ms());
  if (line > 0 && reason.find("(line ") == std::string::npos) {
    reason += " (line " + std::to_string(line) + ")";
  }
  return reason;
}

bool Session::Run(const Source& source, Answer& answer) {
  const std::string text = ToInterpreter(source.text);
  const std::string name(source.name);
  answer_ = &answer;
  const bool done = Protected([&] {
    duk_push_string(context_, name.c_str());
    duk_compile_lstring_filename(context_, CompileFlags(text), text.data(), text.size());
    duk_call(context_, 0);
    if (!answer.Empty() || duk_is_undefined(context_, -1) || duk_is_function(context_, -1)) return;
    MakeText(context_);
    answer.Append(TopAsText(context_));
  });
  if (!done) answer.Fail(FailureText());
  answer_ = nullptr;
  return done;
}

// Pushes a variable. False, with nothing on the stack, if there is none.
bool Session::FindVariable(std::string_view name) {
  duk_push_global_object(context_);
  if (duk_get_prop_lstring(context_, -1, name.data(), name.size()) != 0) return true;
  duk_pop_2(context_);
  return false;
}

std::optional<std::string> Session::Text(std::string_view name) {
  const std::string key = ToInterpreter(name);
  std::optional<std::string> text;
  Try([&] {
    if (!FindVariable(key)) return;
    if (duk_is_null_or_undefined(context_, -1)) return void(text.emplace());
    MakeText(context_);
    text = TopAsText(context_);
  });
  return text;
}

std::optional<double> Session::Number(std::string_view name) {
  const std::string key = ToInterpreter(name);
  std::optional<double> number;
  Try([&] {
    if (!FindVariable(key)) return;
    if (duk_is_boolean(context_, -1)) number = duk_get_boolean(context_, -1);
    if (duk_is_number(context_, -1)) number = duk_get_number(context_, -1);
    if (duk_is_string(context_, -1)) number = NumberIn(TopAsText(context_));
  });
  return number;
}

int32_t Session::Kind(std::string_view name) {
  const std::string key = ToInterpreter(name);
  int32_t kind = VLANG_MISSING;
  Try([&] {
    if (FindVariable(key)) kind = KindOfTop(context_);
  });
  return kind;
}

// Sets a variable to what `push` pushes.
template <typename Push>
bool Session::Set(std::string_view name, Push push) {
  const std::string key = ToInterpreter(name);
  return Try([&] {
    duk_push_global_object(context_);
    push();
    duk_put_prop_lstring(context_, -2, key.data(), key.size());
  });
}

bool Session::SetText(std::string_view name, std::string_view text) {
  const std::string value = ToInterpreter(text);
  return Set(name, [&] { duk_push_lstring(context_, value.data(), value.size()); });
}

bool Session::SetJson(std::string_view name, std::string_view text) {
  const std::string value = ToInterpreter(text);
  return Set(name, [&] {
    duk_push_lstring(context_, value.data(), value.size());
    duk_json_decode(context_, -1);
  });
}

bool Session::SetNumber(std::string_view name, double value) {
  return Set(name, [&] { duk_push_number(context_, value); });
}

std::vector<std::string> Session::Names() {
  std::vector<std::string> names;
  Try([&] {
    duk_push_global_object(context_);
    duk_enum(context_, -1, DUK_ENUM_OWN_PROPERTIES_ONLY);
    while (duk_next(context_, -1, 1) != 0) {
      const bool function = duk_is_function(context_, -1) != 0;
      duk_pop(context_);
      if (!function) names.push_back(TopAsText(context_));
      duk_pop(context_);
    }
  });
  return names;
}

std::unique_ptr<LanguageSession> LanguageSession::Create(std::string& problem) {
  auto session = std::make_unique<Session>();
  if (session->Usable()) return session;
  problem = "no memory for a session";
  return nullptr;
}

}  // namespace vorc

extern "C" duk_bool_t vorc_run_expired(void* session) {
  return static_cast<vorc::Session*>(session)->Expired() ? 1 : 0;
}
