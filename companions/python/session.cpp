#include "python/object.h"
// Python.h stays first.
#include "languages/session.h"
#include "python/interpreter.h"
#include "python/values.h"

namespace vorc {

namespace {

constexpr Py_ssize_t kKeptCodes = 128;
constexpr size_t kKeptSize = 4096;

bool IsVariable(PyObject* name, PyObject* value) {
  if (!PyUnicode_Check(name) || PyModule_Check(value) || PyType_Check(value)) return false;
  if (PyFunction_Check(value) || PyCFunction_Check(value)) return false;
  return !Utf8Of(name).starts_with("__");
}

/// Variables of a session, in one interpreter that all sessions share.
class Session : public LanguageSession {
 public:
  Session();
  ~Session() override;

  bool Run(const Source& source, Answer& answer) override;
  std::optional<std::string> Text(std::string_view name) override;
  std::optional<double> Number(std::string_view name) override;
  int32_t Kind(std::string_view name) override;
  bool SetText(std::string_view name, std::string_view text) override;
  bool SetJson(std::string_view name, std::string_view text) override;
  bool SetNumber(std::string_view name, double value) override;
  std::vector<std::string> Names() override;

 private:
  Object Find(std::string_view name);
  bool Set(std::string_view name, const Object& value);
  Object Compile(const Source& source);
  Object Code(const Source& source);
  bool Finish(const Source& source, const PythonRun& run, const Object& value, Answer& answer);

  PyObject* globals_ = nullptr;
  PyObject* codes_ = nullptr;  ///< by their texts
};

Session::Session() {
  const Locked locked;
  globals_ = PyDict_New();
  codes_ = PyDict_New();
  const Object name = TextObject("__main__");
  PyDict_SetItemString(globals_, "__name__", name.get());
  PyDict_SetItemString(globals_, "__builtins__", PyEval_GetBuiltins());
}

// Objects that refer to each other, and what they hold open, go at once.
Session::~Session() {
  const Locked locked;
  PyDict_Clear(globals_);
  Py_DECREF(globals_);
  Py_DECREF(codes_);
  PyGC_Collect();
  PyErr_Clear();
}

// As an expression, which has a value, or as statements.
Object Session::Compile(const Source& source) {
  const std::string text(source.text);
  const std::string name(source.name);
  const Object file = TextObject(name);
  if (file == nullptr) return nullptr;
  if (!source.is_file) {
    Object code(Py_CompileStringObject(text.c_str(), file.get(), Py_eval_input, nullptr, -1));
    if (code != nullptr || PyErr_ExceptionMatches(PyExc_SyntaxError) == 0) return code;
    PyErr_Clear();
  }
  return Object(Py_CompileStringObject(text.c_str(), file.get(), Py_file_input, nullptr, -1));
}

Object Session::Code(const Source& source) {
  if (source.is_file || source.text.size() > kKeptSize) return Compile(source);
  const Object key(
      PyBytes_FromStringAndSize(source.text.data(), static_cast<Py_ssize_t>(source.text.size())));
  if (key == nullptr) return nullptr;
  if (PyObject* kept = PyDict_GetItemWithError(codes_, key.get())) return Borrow(kept);
  if (PyErr_Occurred() != nullptr) return nullptr;
  Object code = Compile(source);
  if (code == nullptr) return nullptr;
  if (PyDict_Size(codes_) >= kKeptCodes) PyDict_Clear(codes_);
  PyDict_SetItem(codes_, key.get(), code.get());
  return code;
}

// A program's end by sys.exit is no failure unless its status says so.
bool EndedWell() {
  if (PyErr_ExceptionMatches(PyExc_SystemExit) == 0) return false;
  PyObject* type = nullptr;
  PyObject* value = nullptr;
  PyObject* traceback = nullptr;
  PyErr_Fetch(&type, &value, &traceback);
  PyErr_NormalizeException(&type, &value, &traceback);
  const Object status(PyObject_GetAttrString(value, "code"));
  const bool well = status != nullptr && (status.get() == Py_None ||
                                          (PyLong_Check(status.get()) && PyLong_AsLong(status.get()) == 0));
  PyErr_Restore(type, value, traceback);
  if (well) PyErr_Clear();
  return well;
}

bool Session::Finish(const Source& source, const PythonRun& run, const Object& value, Answer& answer) {
  if (value != nullptr) {
    if (answer.Empty() && value.get() != Py_None) answer.Append(TextOf(value.get()));
    return true;
  }
  if (EndedWell()) return true;
  const std::string error = TakeError(source.name);
  answer.Fail(run.expired() ? LimitReached(limit_ms()) : error);
  return false;
}

// Finds modules beside a program's file, as long as it runs.
class ProgramFolder {
 public:
  explicit ProgramFolder(const Source& source) {
    if (!source.is_file) return;
    const size_t slash = source.name.rfind('/');
    folder_ = TextObject(slash == std::string_view::npos ? "" : source.name.substr(0, slash + 1));
    PyObject* path = PySys_GetObject("path");
    if (folder_ != nullptr && path != nullptr) PyList_Insert(path, 0, folder_.get());
    PyErr_Clear();
  }
  ~ProgramFolder() {
    PyObject* path = PySys_GetObject("path");
    if (folder_ == nullptr || path == nullptr) return;
    const Object ignored(PyObject_CallMethod(path, "remove", "O", folder_.get()));
    PyErr_Clear();
  }
  ProgramFolder(const ProgramFolder&) = delete;
  ProgramFolder& operator=(const ProgramFolder&) = delete;

 private:
  Object folder_;
};

bool Session::Run(const Source& source, Answer& answer) {
  const Locked locked;
  const ProgramFolder folder(source);
  if (source.is_file) Set("__file__", TextObject(source.name));
  PythonRun run(answer, limit_ms());
  const Object code = Code(source);
  const Object value(code == nullptr ? nullptr : PyEval_EvalCode(code.get(), globals_, globals_));
  return Finish(source, run, value, answer);
}

Object Session::Find(std::string_view name) {
  const Object key = TextObject(name);
  Object value = key == nullptr ? nullptr : Borrow(PyDict_GetItemWithError(globals_, key.get()));
  PyErr_Clear();
  return value;
}

bool Session::Set(std::string_view name, const Object& value) {
  const Object key = TextObject(name);
  const bool done =
      key != nullptr && value != nullptr && PyDict_SetItem(globals_, key.get(), value.get()) == 0;
  PyErr_Clear();
  return done;
}

std::optional<std::string> Session::Text(std::string_view name) {
  const Locked locked;
  const Object value = Find(name);
  return value == nullptr ? std::nullopt : std::optional(TextOf(value.get()));
}

std::optional<double> Session::Number(std::string_view name) {
  const Locked locked;
  const Object value = Find(name);
  return value == nullptr ? std::nullopt : NumberOf(value.get());
}

int32_t Session::Kind(std::string_view name) {
  const Locked locked;
  const Object value = Find(name);
  return value == nullptr ? int32_t{VLANG_MISSING} : KindOf(value.get());
}

bool Session::SetText(std::string_view name, std::string_view text) {
  const Locked locked;
  return Set(name, TextObject(text));
}

bool Session::SetJson(std::string_view name, std::string_view text) {
  const Locked locked;
  return Set(name, FromJson(text));
}

bool Session::SetNumber(std::string_view name, double value) {
  const Locked locked;
  return Set(name, NumberObject(value));
}

std::vector<std::string> Session::Names() {
  const Locked locked;
  std::vector<std::string> names;
  PyObject* name = nullptr;
  PyObject* value = nullptr;
  for (Py_ssize_t at = 0; PyDict_Next(globals_, &at, &name, &value) != 0;) {
    if (IsVariable(name, value)) names.push_back(Utf8Of(name));
  }
  return names;
}

}  // namespace

std::unique_ptr<LanguageSession> LanguageSession::Create(std::string& problem) {
  if (!StartPython(problem)) return nullptr;
  return std::make_unique<Session>();
}

}  // namespace vorc
