// A tree as Python asks it: by the numbers of items.

#include "tree_object.h"

#include <memory>

#include "module.h"
#include "outcome.h"

namespace pagerex::python {
namespace {

/// Null with an exception set.
const Item* itemOf(PyObject* self, PyObject* number) {
  const size_t index = PyLong_AsSize_t(number);
  const Tree& tree = treeOf(self);
  if (index < tree.items.size()) return &tree.items[index];
  if (!PyErr_Occurred()) PyErr_SetString(PyExc_IndexError, "no such item");
  return nullptr;
}

PyObject* kind(PyObject* self, PyObject* number) {
  const Item* const item = itemOf(self, number);
  return item ? PyLong_FromLong(static_cast<long>(item->kind)) : nullptr;
}

PyObject* parent(PyObject* self, PyObject* number) {
  const Item* const item = itemOf(self, number);
  return item ? PyLong_FromUnsignedLong(item->parent) : nullptr;
}

PyObject* next(PyObject* self, PyObject* number) {
  const Item* const item = itemOf(self, number);
  return item ? PyLong_FromUnsignedLong(item->next) : nullptr;
}

PyObject* span(PyObject* self, PyObject* number) {
  const Item* const item = itemOf(self, number);
  return item ? Py_BuildValue("II", item->first, item->last) : nullptr;
}

PyObject* isAside(PyObject* self, PyObject* number) {
  const Item* const item = itemOf(self, number);
  return item ? PyBool_FromLong(item->isAside) : nullptr;
}

PyObject* text(PyObject* self, PyObject* number) {
  const Item* const item = itemOf(self, number);
  if (!item) return nullptr;
  const std::string_view text = treeOf(self).TextOf(*item);
  return textOf(text.data(), text.size());
}

bool append(PyObject* list, size_t number) {
  const Ref entry(PyLong_FromSize_t(number));
  return entry && PyList_Append(list, entry.get()) == 0;
}

PyObject* children(PyObject* self, PyObject* number) {
  const Item* const item = itemOf(self, number);
  Ref list(item ? PyList_New(0) : nullptr);
  if (!list) return nullptr;
  const auto& items = treeOf(self).items;
  const size_t own = static_cast<size_t>(item - items.data());
  for (size_t i = own + 1; i < item->next; i = items[i].next)
    if (!append(list.get(), i)) return nullptr;
  return list.Release();
}

PyObject* find(PyObject* self, PyObject* arguments) {
  PyObject* number = nullptr;
  int wanted = 0;
  if (!PyArg_ParseTuple(arguments, "Oi", &number, &wanted)) return nullptr;
  const Item* const item = itemOf(self, number);
  Ref list(item ? PyList_New(0) : nullptr);
  if (!list) return nullptr;
  const auto& items = treeOf(self).items;
  const size_t own = static_cast<size_t>(item - items.data());
  for (size_t i = own + 1; i < item->next; ++i)
    if (static_cast<int>(items[i].kind) == wanted && !append(list.get(), i)) return nullptr;
  return list.Release();
}

PyObject* facts(PyObject* self, PyObject* number) {
  const Item* const item = itemOf(self, number);
  if (!item) return nullptr;
  const Tree& t = treeOf(self);
  PyObject* const module = reinterpret_cast<TreeObject*>(self)->module;
  const auto make = [&](FactsType type, const auto& all) {
    return makeFacts(module, self, type, &all[item->facts]);
  };
  switch (item->kind) {
    case ItemKind::kRun:
      return make(kRunFacts, t.runs);
    case ItemKind::kParagraph:
      return make(kParagraphFacts, t.paragraphs);
    case ItemKind::kSection:
      return make(kSectionFacts, t.sections);
    case ItemKind::kHeader:
      return make(kHeaderFacts, t.headers);
    case ItemKind::kTable:
      return make(kTableFacts, t.tables);
    case ItemKind::kRow:
      return make(kRowFacts, t.rows);
    case ItemKind::kCell:
      return make(kCellFacts, t.cells);
    case ItemKind::kLink:
      return make(kLinkFacts, t.links);
    case ItemKind::kNote:
    case ItemKind::kNoteReference:
    case ItemKind::kNoteMark:
      return make(kNoteFacts, t.notes);
    case ItemKind::kComment:
      return make(kCommentFacts, t.comments);
    case ItemKind::kRevision:
      return make(kRevisionFacts, t.revisions);
    case ItemKind::kFormField:
      return make(kFormFieldFacts, t.formFields);
    case ItemKind::kPicture:
      return make(kPictureFacts, t.pictures);
    case ItemKind::kBookmarkStart:
    case ItemKind::kBookmarkEnd:
      return textOf(t.strings[item->facts].data(), t.strings[item->facts].size());
    default:
      return PyLong_FromUnsignedLong(item->facts);
  }
}

PyObject* body(PyObject* self, PyObject*) {
  const std::string& text = treeOf(self).body;
  return textOf(text.data(), text.size());
}

Py_ssize_t size(PyObject* self) {
  return static_cast<Py_ssize_t>(treeOf(self).items.size());
}

void freeTree(PyObject* self) {
  auto& object = *reinterpret_cast<TreeObject*>(self);
  delete object.tree;
  Py_XDECREF(object.module);
  freeObject(self);
}

PyMethodDef methods[] = {{"kind", kind, METH_O, "What an item is."},
                         {"parent", parent, METH_O, "What an item stands in."},
                         {"next", next, METH_O, "The number behind all that is within an item."},
                         {"children", children, METH_O, "The items directly within one."},
                         {"find", find, METH_VARARGS, "All items of a kind within one, however deep."},
                         {"span", span, METH_O, "The characters of an item in the text it belongs to."},
                         {"is_aside", isAside, METH_O, "Whether that is not the body's."},
                         {"text", text, METH_O, "The text of an item."},
                         {"facts", facts, METH_O, "What is known of an item."},
                         {"body", body, METH_NOARGS, "The whole text of the body."},
                         {}};
PyType_Slot slots[] = {{Py_tp_methods, methods},
                       {Py_sq_length, slot(size)},
                       {Py_tp_new, slot(refuseNew)},
                       {Py_tp_dealloc, slot(freeTree)},
                       {0, nullptr}};

}  // namespace

PyType_Spec treeSpec = {"pagerex._native.Tree", sizeof(TreeObject), 0, Py_TPFLAGS_DEFAULT, slots};

PyObject* makeTree(PyObject* module, std::unique_ptr<Tree> tree) {
  PyObject* const object = makeObject(stateOf(module).treeType);
  if (!object) return nullptr;
  auto& made = *reinterpret_cast<TreeObject*>(object);
  Py_INCREF(module);
  made.module = module;
  made.tree = tree.release();
  return object;
}

}  // namespace pagerex::python
