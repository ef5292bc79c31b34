#include "wordreader/sections.h"

#include "wordreader/document.h"

KDRPlcfsed::ItemType KDRPlcfsed::Item(uint32_t i, const KDRDocument& document) const {
  ItemType item{Range(i), {}};
  const mso_word::SED* section = Data(i);
  if (section && section->fcSepx != -1) {
    item.sprms = PropertyList(static_cast<uint32_t>(section->fcSepx), document);
  }
  return item;
}

ByteView KDRPlcfsed::PropertyList(uint32_t fcSepx, const KDRDocument& document) const {
  const auto known = listByOffset_.find(fcSepx);
  if (known != listByOffset_.end()) return known->second;

  DsMemReadArchive& word = document.GetDocFile().getWordDocumentStrm();
  word.seek(static_cast<long>(fcSepx), 0);
  uint16_t size = 0;
  word.get16u(size);
  // Lists of a sound file do not overlap, so all of them together fit into the stream.
  ByteView list;
  if (size <= word.bytesHeld() - listBytes_) list = ReadBytes(word, size, document.GetAllocator());
  listBytes_ += list.size();
  listByOffset_.emplace(fcSepx, list);
  return list;
}
