#include "storage/storage_adaptors.h"

#include <gtest/gtest.h>

#include "opened_file.h"
#include "storage/sot_storage.h"

using namespace storage_test;
using support::Bytes;
using support::CompoundFileWriter;

namespace {

/// A file with a stream "S" of 100 bytes (two tiny pages) in the root, and "T" in the storage "Sub".
struct SmallFile : OpenedFile {
  SmallFile()
      : OpenedFile(CompoundFileWriter().stream(u"S", pattern(100)).stream(u"Sub/T", Bytes{1, 2, 3})),
        s(stream(L"S")) {}
  Stream s;
};

/// A stream that stands where it is told to.
class StandingStream : public IStreamBase {
 public:
  explicit StandingStream(unsigned int position) : position_(position) {}
  unsigned int size() const override { return 0xFFFFFFFF; }
  unsigned int tell() const override { return position_; }
  unsigned int read(char*, unsigned int) const override { return 0; }
  bool seek(long, int) override { return true; }
  unsigned int bytesLeft() const override { return 0; }
  unsigned int readHeld(char*, unsigned int) const override { return 0; }
  unsigned int bytesHeld() const override { return 0; }
  const uint8_t* view(unsigned int) const override { return nullptr; }

 private:
  unsigned int position_;
};

constexpr Status kRefused = Status::kNotImplemented;

}  // namespace

TEST(StreamAdaptor, ReadsWithoutTellingTheCount) {
  SmallFile file;
  char buffer[4];
  EXPECT_EQ(file.s->Read(buffer, 4, nullptr), Status::kOk);
  EXPECT_EQ(tell(file.s), 4u);
}

TEST(StreamAdaptor, TakesAShortReadForSuccess) {
  SmallFile file;
  char buffer[200];
  unsigned long count = 7;
  EXPECT_EQ(file.s->Read(buffer, 200, &count), Status::kOk);
  EXPECT_EQ(count, 100u);
}

TEST(StreamAdaptor, StoresZeroForANullBuffer) {
  SmallFile file;
  unsigned long count = 7;
  EXPECT_EQ(file.s->Read(nullptr, 4, &count), Status::kInvalidArgument);
  EXPECT_EQ(count, 0u);
}

TEST(StreamAdaptor, RefusesSeekToExactlyTheChainsEndAndTellsThePosition) {
  SmallFile file;
  seek(file.s, 10);
  _ULARGE_INTEGER position{1, 1};
  EXPECT_EQ(file.s->Seek({128, 0}, STREAM_SEEK_SET, &position), Status::kFailure);
  EXPECT_EQ(position.LowPart, 10u);
  EXPECT_EQ(position.HighPart, 0u);
}

TEST(StreamAdaptor, SeeksByTheLowWordAlone) {
  SmallFile file;
  EXPECT_EQ(file.s->Seek({20, 5}, STREAM_SEEK_SET, nullptr), Status::kOk);
  EXPECT_EQ(tell(file.s), 20u);
}

TEST(StreamAdaptor, ExtendsThePositionWithItsSign) {
  StandingStream far(0x80000000);
  auto* adaptor = new KROStreamAdaptor(&far);
  _ULARGE_INTEGER position{};
  EXPECT_EQ(adaptor->Seek({0, 0}, STREAM_SEEK_CUR, &position), Status::kOk);
  EXPECT_EQ(position.LowPart, 0x80000000u);
  EXPECT_EQ(position.HighPart, 0xFFFFFFFFu);
  adaptor->Release();
}

TEST(StreamAdaptor, StoresTheSizeAndNothingElse) {
  SmallFile file;
  tagSTATSTG stat;
  std::memset(&stat, 0xAB, sizeof(stat));
  EXPECT_EQ(file.s->Stat(&stat, STATFLAG_NONAME), Status::kOk);
  EXPECT_EQ(stat.cbSize.LowPart, 100u);
  EXPECT_EQ(stat.cbSize.HighPart, 0u);
  for (uint8_t byte : stat.unused0) EXPECT_EQ(byte, 0xAB);
}

TEST(StreamAdaptor, RefusesToTellTheSizeToNobody) {
  SmallFile file;
  EXPECT_EQ(file.s->Stat(nullptr, STATFLAG_NONAME), Status::kInvalidArgument);
}

TEST(StreamAdaptor, RevertsToTheStart) {
  SmallFile file;
  seek(file.s, 10);
  EXPECT_EQ(file.s->Revert(), Status::kOk);
  EXPECT_EQ(tell(file.s), 0u);
}

TEST(StreamAdaptor, RefusesWhateverWouldChangeTheFile) {
  SmallFile file;
  void* object = nullptr;
  IStream* copy = nullptr;
  EXPECT_EQ(file.s->QueryInterface({}, &object), kRefused);
  EXPECT_EQ(file.s->Write("x", 1, nullptr), kRefused);
  EXPECT_EQ(file.s->SetSize({1, 0}), kRefused);
  EXPECT_EQ(file.s->CopyTo(file.s.get(), {1, 0}, nullptr, nullptr), kRefused);
  EXPECT_EQ(file.s->Commit(0), kRefused);
  EXPECT_EQ(file.s->LockRegion({0, 0}, {1, 0}, 0), kRefused);
  EXPECT_EQ(file.s->UnlockRegion({0, 0}, {1, 0}, 0), kRefused);
  EXPECT_EQ(file.s->Clone(&copy), kRefused);
}

TEST(StreamAdaptor, CountsItsReferencesFromOne) {
  SmallFile file;
  EXPECT_EQ(file.s->AddRef(), 2u);
  EXPECT_EQ(file.s->Release(), 1u);
}

TEST(StreamAdaptor, IsEmptyWithoutAStream) {
  auto* adaptor = new KROStreamAdaptor(nullptr);
  char buffer[1];
  unsigned long count = 7;
  tagSTATSTG stat;
  EXPECT_EQ(adaptor->Read(buffer, 1, &count), Status::kInvalidArgument);
  EXPECT_EQ(count, 0u);
  EXPECT_EQ(adaptor->Seek({0, 0}, STREAM_SEEK_SET, nullptr), Status::kFailure);
  EXPECT_EQ(adaptor->Stat(&stat, STATFLAG_NONAME), Status::kInvalidArgument);
  EXPECT_EQ(adaptor->Revert(), Status::kOk);
  EXPECT_EQ(adaptor->BytesLeft(), 0u);
  EXPECT_EQ(adaptor->BytesHeld(), 0u);
  EXPECT_EQ(adaptor->ReadHeld(nullptr, 0), 0u);
  EXPECT_EQ(adaptor->Release(), 0u);
}

TEST(StreamAdaptor, SharesOnePositionWithAnotherOverTheSameStream) {
  SmallFile file;
  const Stream other = file.stream(L"S");
  EXPECT_NE(other.get(), file.s.get());
  seek(file.s, 33);
  EXPECT_EQ(tell(other), 33u);
}

TEST(StorageAdaptor, ReportsANameThatIsNotThereEachTime) {
  SmallFile file;
  for (int i = 0; i < 2; ++i) {
    auto* stream = reinterpret_cast<IStream*>(&file);
    EXPECT_EQ(file.root->OpenStream(L"None", nullptr, 16, 0, &stream), Status::kStreamNotFound);
    EXPECT_EQ(stream, nullptr);
    auto* storage = reinterpret_cast<IStorage*>(&file);
    EXPECT_EQ(file.root->OpenStorage(L"None", nullptr, 16, nullptr, 0, &storage), Status::kStreamNotFound);
    EXPECT_EQ(storage, nullptr);
  }
}

TEST(StorageAdaptor, TellsStreamsFromStorages) {
  SmallFile file;
  EXPECT_FALSE(openStream(file.root, L"Sub"));
  EXPECT_FALSE(openStorage(file.root, L"S"));
}

TEST(StorageAdaptor, OpensAStorageAndTheStreamInIt) {
  SmallFile file;
  const Storage sub = openStorage(file.root, L"Sub");
  EXPECT_EQ(read(openStream(sub, L"T"), 10), (Bytes{1, 2, 3}));
}

TEST(StorageAdaptor, LeavesAChildStorageToItsParent) {
  SmallFile file;
  openStorage(file.root, L"Sub");
  EXPECT_TRUE(openStream(openStorage(file.root, L"Sub"), L"T"));
}

TEST(StorageAdaptor, IgnoresTheMode) {
  SmallFile file;
  Stream stream;
  EXPECT_EQ(file.root->OpenStream(L"S", nullptr, 0x12345678, 9, stream.out()), Status::kOk);
}

TEST(StorageAdaptor, RefusesNullArguments) {
  SmallFile file;
  IStream* stream = nullptr;
  IStorage* storage = nullptr;
  EXPECT_EQ(file.root->OpenStream(nullptr, nullptr, 16, 0, &stream), Status::kInvalidArgument);
  EXPECT_EQ(file.root->OpenStream(L"S", nullptr, 16, 0, nullptr), Status::kInvalidArgument);
  EXPECT_EQ(file.root->OpenStorage(L"Sub", nullptr, 16, nullptr, 0, nullptr), Status::kInvalidArgument);
  EXPECT_EQ(file.root->OpenStorage(nullptr, nullptr, 16, nullptr, 0, &storage), Status::kStreamNotFound);
}

TEST(StorageAdaptor, IsEmptyWithoutAStorage) {
  auto* adaptor = new KROStorageAdaptor(static_cast<SotRoStorage*>(nullptr));
  IStream* stream = nullptr;
  IStorage* storage = adaptor;
  EXPECT_EQ(adaptor->OpenStream(L"S", nullptr, 16, 0, &stream), Status::kInvalidArgument);
  EXPECT_EQ(adaptor->OpenStorage(L"S", nullptr, 16, nullptr, 0, &storage), Status::kFailure);
  EXPECT_EQ(storage, nullptr);
  EXPECT_EQ(adaptor->Release(), 0u);
}

TEST(StorageAdaptor, AnswersQueryInterfaceWithoutStoringAnything) {
  SmallFile file;
  void* object = &file;
  EXPECT_EQ(file.root->QueryInterface({}, &object), Status::kOk);
  EXPECT_EQ(object, &file);
}

TEST(StorageAdaptor, RefusesWhateverWouldChangeTheFile) {
  SmallFile file;
  IStorage& root = *file.root.get();
  IStream* stream = nullptr;
  IStorage* storage = nullptr;
  IEnumSTATSTG* elements = nullptr;
  tagSTATSTG stat;
  EXPECT_EQ(root.CreateStream(L"N", 0, 0, 0, &stream), kRefused);
  EXPECT_EQ(root.CreateStorage(L"N", 0, 0, 0, &storage), kRefused);
  EXPECT_EQ(root.CopyTo(0, nullptr, nullptr, &root), kRefused);
  EXPECT_EQ(root.MoveElementTo(L"S", &root, L"N", 0), kRefused);
  EXPECT_EQ(root.Commit(0), kRefused);
  EXPECT_EQ(root.Revert(), kRefused);
  EXPECT_EQ(root.EnumElements(0, nullptr, 0, &elements), kRefused);
  EXPECT_EQ(root.DestroyElement(L"S"), kRefused);
  EXPECT_EQ(root.RenameElement(L"S", L"N"), kRefused);
  EXPECT_EQ(root.SetElementTimes(L"S", nullptr, nullptr, nullptr), kRefused);
  EXPECT_EQ(root.SetClass({}), kRefused);
  EXPECT_EQ(root.SetStateBits(0, 0), kRefused);
  EXPECT_EQ(root.Stat(&stat, 0), kRefused);
}

TEST(StorageAdaptor, CountsItsReferencesFromOne) {
  SmallFile file;
  EXPECT_EQ(file.root->AddRef(), 2u);
  EXPECT_EQ(file.root->Release(), 1u);
}
