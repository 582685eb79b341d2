#include "python/values.h"

#include <vorc/vlang.h>

#include <cmath>

#include "languages/answer.h"

namespace vorc {

namespace {

constexpr double kLargestExact = 9007199254740992.0;  // 2^53

Object JsonFunction(const char* name) {
  const Object module(PyImport_ImportModule("json"));
  return module == nullptr ? nullptr : Object(PyObject_GetAttrString(module.get(), name));
}

Object ToJson(PyObject* value) {
  const Object dumps = JsonFunction("dumps");
  const Object arguments(PyTuple_Pack(1, value));
  const Object options(Py_BuildValue("{sO}", "ensure_ascii", Py_False));
  if (dumps == nullptr || arguments == nullptr || options == nullptr) return nullptr;
  return Object(PyObject_Call(dumps.get(), arguments.get(), options.get()));
}

bool IsList(PyObject* value) {
  return PyList_Check(value) || PyTuple_Check(value) || PyDict_Check(value) || PyAnySet_Check(value);
}

std::string Attribute(PyObject* object, const char* name) {
  const Object value(PyObject_GetAttrString(object, name));
  if (value == nullptr) PyErr_Clear();
  return value != nullptr && PyUnicode_Check(value.get()) ? Utf8Of(value.get()) : "";
}

long LineAttribute(PyObject* object, const char* name) {
  const Object value(PyObject_GetAttrString(object, name));
  const long line = value == nullptr || value.get() == Py_None ? 0 : PyLong_AsLong(value.get());
  PyErr_Clear();
  return line;
}

std::string FileOf(PyObject* entry) {
  const Object frame(PyObject_GetAttrString(entry, "tb_frame"));
  const Object code(frame == nullptr ? nullptr : PyObject_GetAttrString(frame.get(), "f_code"));
  PyErr_Clear();
  return code == nullptr ? "" : Attribute(code.get(), "co_filename");
}

long LineIn(PyObject* traceback, std::string_view source_name) {
  long line = 0;
  for (Object entry = Borrow(traceback); entry != nullptr && entry.get() != Py_None;) {
    if (FileOf(entry.get()) == source_name) line = LineAttribute(entry.get(), "tb_lineno");
    entry.reset(PyObject_GetAttrString(entry.get(), "tb_next"));
  }
  PyErr_Clear();
  return line;
}

std::string Described(PyObject* type, PyObject* value) {
  std::string text = Attribute(type, "__name__");
  const bool syntax = PyErr_GivenExceptionMatches(type, PyExc_SyntaxError) != 0;
  const Object told(PyObject_Str(value));
  PyErr_Clear();
  const std::string message = syntax ? Attribute(value, "msg") : told != nullptr ? Utf8Of(told.get()) : "";
  return message.empty() ? text : text + ": " + message;
}

}  // namespace

Object TextObject(std::string_view text) {
  return Object(PyUnicode_DecodeUTF8(text.data(), static_cast<Py_ssize_t>(text.size()), "surrogateescape"));
}

std::string Utf8Of(PyObject* text) {
  Object bytes(PyUnicode_AsEncodedString(text, "utf-8", "surrogateescape"));
  if (bytes == nullptr) {
    PyErr_Clear();
    bytes.reset(PyUnicode_AsEncodedString(text, "utf-8", "backslashreplace"));
  }
  PyErr_Clear();
  if (bytes == nullptr) return "";
  return {PyBytes_AS_STRING(bytes.get()), static_cast<size_t>(PyBytes_GET_SIZE(bytes.get()))};
}

std::string TextOf(PyObject* value) {
  if (value == Py_None) return "";
  if (PyUnicode_Check(value)) return Utf8Of(value);
  if (PyBool_Check(value)) return value == Py_True ? "true" : "false";
  // What JSON has no word for is told as the language tells it.
  Object text = IsList(value) ? ToJson(value) : nullptr;
  PyErr_Clear();
  if (text == nullptr) text.reset(PyObject_Str(value));
  PyErr_Clear();
  return text == nullptr ? "" : Utf8Of(text.get());
}

std::optional<double> NumberOf(PyObject* value) {
  if (PyUnicode_Check(value)) return NumberIn(Utf8Of(value));
  if (!PyLong_Check(value) && !PyFloat_Check(value)) return std::nullopt;
  const double number = PyFloat_AsDouble(value);
  const bool fits = PyErr_Occurred() == nullptr;
  PyErr_Clear();
  return fits ? std::optional(number) : std::nullopt;
}

int32_t KindOf(PyObject* value) {
  if (value == Py_None) return VLANG_NONE;
  if (PyBool_Check(value)) return VLANG_BOOL;
  if (PyLong_Check(value)) return VLANG_INT;
  if (PyFloat_Check(value)) return VLANG_REAL;
  return IsList(value) ? VLANG_LIST : VLANG_TEXT;
}

Object NumberObject(double value) {
  const bool whole = std::trunc(value) == value && std::fabs(value) <= kLargestExact;
  return Object(whole ? PyLong_FromDouble(value) : PyFloat_FromDouble(value));
}

Object FromJson(std::string_view text) {
  const Object source = TextObject(text);
  const Object loads = JsonFunction("loads");
  if (source == nullptr || loads == nullptr) return nullptr;
  return Object(PyObject_CallOneArg(loads.get(), source.get()));
}

std::string TakeError(std::string_view source_name) {
  PyObject* type = nullptr;
  PyObject* value = nullptr;
  PyObject* traceback = nullptr;
  PyErr_Fetch(&type, &value, &traceback);
  PyErr_NormalizeException(&type, &value, &traceback);
  const Object owned_type(type);
  const Object owned_value(value);
  const Object owned_traceback(traceback);
  if (type == nullptr || value == nullptr) return "unknown error";
  const bool syntax = PyErr_GivenExceptionMatches(type, PyExc_SyntaxError) != 0;
  std::string text = Described(type, value);
  const long line = syntax ? LineAttribute(value, "lineno") : LineIn(traceback, source_name);
  if (line > 0) text += " (line " + std::to_string(line) + ")";
  return text;
}

}  // namespace vorc
