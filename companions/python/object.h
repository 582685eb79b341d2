#pragma once

// CPython asks to come first.
#define PY_SSIZE_T_CLEAN
#include <Python.h>

#include <memory>

namespace vorc {

struct Release {
  void operator()(PyObject* object) const { Py_DECREF(object); }
};

/// A reference that is given back.
using Object = std::unique_ptr<PyObject, Release>;

/// Another reference to what somebody else holds; empty for none.
inline Object Borrow(PyObject* object) {
  Py_XINCREF(object);
  return Object(object);
}

/// Holds the interpreter's lock.
class Locked {
 public:
  Locked() : state_(PyGILState_Ensure()) {}
  ~Locked() { PyGILState_Release(state_); }
  Locked(const Locked&) = delete;
  Locked& operator=(const Locked&) = delete;

 private:
  PyGILState_STATE state_;
};

}  // namespace vorc
