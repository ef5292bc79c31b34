#pragma once

#include "python.h"
#include "tree.h"

namespace pagerex::python {

struct TreeObject {
  PyObject_HEAD PyObject* module;
  Tree* tree;
};

struct FactsObject {
  PyObject_HEAD PyObject* tree;
  const void* facts;
};

inline const Tree& treeOf(PyObject* object) {
  return *reinterpret_cast<TreeObject*>(object)->tree;
}

}  // namespace pagerex::python
