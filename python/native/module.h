#pragma once

#include <memory>

#include "python.h"
#include "tree.h"

namespace pagerex::python {

/// Kinds of facts that Python sees as objects with attributes.
enum FactsType {
  kRunFacts,
  kParagraphFacts,
  kSectionFacts,
  kHeaderFacts,
  kTableFacts,
  kRowFacts,
  kCellFacts,
  kLinkFacts,
  kNoteFacts,
  kCommentFacts,
  kRevisionFacts,
  kFormFieldFacts,
  kPictureFacts,
  kFactsTypeCount
};

/// Of each interpreter, as its types are.
struct ModuleState {
  PyObject* cancelType;
  PyObject* documentType;
  PyObject* treeType;
  PyObject* factsTypes[kFactsTypeCount];
};

extern PyType_Spec cancelSpec, documentSpec, treeSpec;
/// Of the type of a kind of facts.
PyType_Spec factsSpec(FactsType type);

/// In Python: open(source, settings) and convert(source, target, main_name, settings).
PyObject* openDocument(PyObject* module, PyObject* arguments);
PyObject* convertDocument(PyObject* module, PyObject* arguments);
/// convert_picture(data, width, height)
PyObject* convertPicture(PyObject* module, PyObject* arguments);

/// Takes over the tree. Null with an exception set.
PyObject* makeTree(PyObject* module, std::unique_ptr<Tree> tree);
/// Attributes of `facts`, which `tree` owns.
PyObject* makeFacts(PyObject* module, PyObject* tree, FactsType type, const void* facts);

/// Of a type whose objects only the module makes.
PyObject* refuseNew(PyTypeObject* type, PyObject* arguments, PyObject* keywords);
/// A new object of a type of this module.
PyObject* makeObject(PyObject* type);
/// The end of one.
void freeObject(PyObject* self);

inline ModuleState& stateOf(PyObject* module) {
  return *static_cast<ModuleState*>(PyModule_GetState(module));
}

}  // namespace pagerex::python
