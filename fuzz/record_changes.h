#pragma once

#include <span>

#include "mutations.h"

/// Changes to lists of records, as metafiles are: most of what comes out are still records whose sizes are
/// right.
namespace fuzz {

/// Where a record has its kind and its size.
struct RecordForm {
  size_t head;        ///< bytes of a record before its parameters
  size_t kindOffset;  ///< 16 bits
  size_t sizeOffset;  ///< 32 bits
  size_t sizeUnit;    ///< bytes that the size counts
  size_t dataOffset;  ///< a second size, of the parameters alone; 0 for none
  size_t parameter;   ///< bytes of most parameters
  std::span<const uint16_t> kinds;
};

extern const RecordForm kWmfForm, kEmfForm, kEmfPlusForm;

/// Takes, adds, repeats, moves or changes one of the records that lie behind the first `begin` bytes.
void changeRecordList(support::Bytes& bytes, size_t begin, const RecordForm& form, size_t room,
                      Random& random);
/// Puts a record of the other list among the own ones.
void takeRecord(support::Bytes& bytes, size_t begin, const support::Bytes& other, size_t otherBegin,
                const RecordForm& form, Random& random);

/// Where the records of a Windows metafile begin.
size_t wmfRecords(const support::Bytes& bytes);

/// As `changeRecordList`, also in the records of EMF+ that lie in comments of an enhanced metafile.
void changeEmf(support::Bytes& bytes, size_t room, Random& random);

}  // namespace fuzz
