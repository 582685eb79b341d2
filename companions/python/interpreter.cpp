#include "python/object.h"
// Python.h stays first.
#include <dlfcn.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <csignal>
#include <ctime>

#include "python/interpreter.h"
#include "python/values.h"

#ifndef sigev_notify_thread_id
#define sigev_notify_thread_id _sigev_un._tid
#endif

namespace vorc {

namespace {

constexpr int64_t kNanosecondsPerMs = 1'000'000;
constexpr int64_t kNanosecondsPerSecond = 1'000'000'000;
constexpr int64_t kAgainMs = 10;
// A program may clean up when it is ended. After so many reminders nothing of it runs any more.
constexpr int kPatience = 10;

/// What is running now. Only the thread that started the interpreter looks at it.
struct Running {
  Answer* answer = nullptr;
  int64_t deadline_ns = 0;  ///< 0 for none
  int reminders = 0;
};

Running current;
PyObject* writer = nullptr;
PyObject* limit_error = nullptr;
timer_t timer{};
bool has_timer = false;

int SignalNumber() {
  return SIGRTMAX - 3;
}

int64_t Now() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return int64_t{now.tv_sec} * kNanosecondsPerSecond + now.tv_nsec;
}

PyObject* Write(PyObject*, PyObject* text) {
  if (!PyUnicode_Check(text)) return PyErr_Format(PyExc_TypeError, "write() argument must be str");
  Py_ssize_t size = 0;
  if (current.answer != nullptr) {
    if (const char* bytes = PyUnicode_AsUTF8AndSize(text, &size)) {
      current.answer->Append({bytes, static_cast<size_t>(size)});
    } else {
      PyErr_Clear();
      current.answer->Append(Utf8Of(text));
    }
  }
  return PyLong_FromSsize_t(PyUnicode_GetLength(text));
}

PyObject* Flush(PyObject*, PyObject*) {
  Py_RETURN_NONE;
}

PyObject* IsTerminal(PyObject*, PyObject*) {
  Py_RETURN_FALSE;
}

int RaiseAlways(PyObject*, PyFrameObject*, int, PyObject*) {
  PyErr_SetNone(limit_error);
  return -1;
}

// Runs between two steps of the program, or when a call that waits is woken.
PyObject* OnSignal(PyObject*, PyObject*) {
  if (current.deadline_ns == 0 || Now() < current.deadline_ns) Py_RETURN_NONE;
  if (++current.reminders > kPatience) PyEval_SetTrace(RaiseAlways, nullptr);
  PyErr_SetNone(limit_error);
  return nullptr;
}

PyMethodDef writer_methods[] = {{"write", Write, METH_O, nullptr},
                                {"flush", Flush, METH_NOARGS, nullptr},
                                {"isatty", IsTerminal, METH_NOARGS, nullptr},
                                {nullptr, nullptr, 0, nullptr}};
PyType_Slot writer_slots[] = {{Py_tp_methods, writer_methods}, {0, nullptr}};
PyType_Spec writer_spec = {"vorc.Answer", 0, 0, Py_TPFLAGS_DEFAULT, writer_slots};
PyMethodDef on_signal = {"on_limit", OnSignal, METH_VARARGS, nullptr};

// The process's locale and its signals stay as they are; texts are UTF-8 whatever the locale.
PyStatus Configure() {
  PyPreConfig before;
  PyPreConfig_InitPythonConfig(&before);
  before.utf8_mode = 1;
  before.configure_locale = 0;
  before.coerce_c_locale = 0;
  before.parse_argv = 0;
  PyStatus status = Py_PreInitialize(&before);
  if (PyStatus_Exception(status)) return status;
  PyConfig config;
  PyConfig_InitPythonConfig(&config);
  config.install_signal_handlers = 0;
  config.parse_argv = 0;
  config.configure_c_stdio = 0;
  // A python3 of another version on the PATH would lend its modules.
  status = PyConfig_SetBytesString(&config, &config.program_name, VORC_PYTHON_PREFIX "/bin/python3");
  if (!PyStatus_Exception(status)) status = Py_InitializeFromConfig(&config);
  PyConfig_Clear(&config);
  return status;
}

// Modules that are libraries themselves look for the interpreter's functions among those of all the process.
void ShowFunctions() {
  Dl_info info{};
  if (dladdr(reinterpret_cast<void*>(&Py_InitializeFromConfig), &info) == 0) return;
  dlopen(info.dli_fname, RTLD_NOW | RTLD_GLOBAL | RTLD_NOLOAD);
}

bool MakeWriter() {
  const Object type(PyType_FromSpec(&writer_spec));
  if (type == nullptr) return false;
  const Object encoding(PyUnicode_FromString("utf-8"));
  if (encoding == nullptr || PyObject_SetAttrString(type.get(), "encoding", encoding.get()) != 0)
    return false;
  writer = PyObject_CallNoArgs(type.get());
  return writer != nullptr;
}

// The signal goes to this thread alone, so that it wakes a call that waits.
bool MakeTimer() {
  limit_error = PyErr_NewException("vorc.TimeLimit", PyExc_BaseException, nullptr);
  const Object module(PyImport_ImportModule("signal"));
  const Object handler(PyCFunction_New(&on_signal, nullptr));
  if (limit_error == nullptr || module == nullptr || handler == nullptr) return false;
  const Object before(PyObject_CallMethod(module.get(), "signal", "iO", SignalNumber(), handler.get()));
  if (before == nullptr) return false;
  sigevent event{};
  event.sigev_notify = SIGEV_THREAD_ID;
  event.sigev_signo = SignalNumber();
  event.sigev_notify_thread_id = static_cast<pid_t>(syscall(SYS_gettid));
  has_timer = timer_create(CLOCK_MONOTONIC, &event, &timer) == 0;
  return has_timer;
}

void SetTimer(int64_t first_ms) {
  itimerspec when{};
  when.it_value = {static_cast<time_t>(first_ms / 1000),
                   static_cast<long>(first_ms % 1000 * kNanosecondsPerMs)};
  if (first_ms > 0) when.it_interval = {0, static_cast<long>(kAgainMs * kNanosecondsPerMs)};
  timer_settime(timer, 0, &when, nullptr);
}

bool Start(std::string& problem) {
  ShowFunctions();
  const PyStatus status = Configure();
  if (PyStatus_Exception(status)) {
    problem = std::string("Python doesn't start: ") + (status.err_msg != nullptr ? status.err_msg : "");
    return false;
  }
  const bool ready = MakeWriter() && MakeTimer();
  if (!ready) problem = "Python doesn't start: " + TakeError("");
  // Between two calls, threads of the program's own may run.
  PyEval_SaveThread();
  return ready;
}

}  // namespace

bool StartPython(std::string& problem) {
  static std::string why;
  static const bool started = Start(why);
  problem = why;
  return started;
}

PythonRun::PythonRun(Answer& answer, int32_t limit_ms) {
  current = {&answer, limit_ms > 0 ? Now() + limit_ms * kNanosecondsPerMs : 0, 0};
  PySys_SetObject("stdout", writer);
  if (limit_ms > 0) SetTimer(limit_ms);
}

PythonRun::~PythonRun() {
  if (current.deadline_ns != 0) SetTimer(0);
  if (current.reminders > kPatience) PyEval_SetTrace(nullptr, nullptr);
  current = {};
}

bool PythonRun::expired() const {
  return current.reminders > 0;
}

}  // namespace vorc
