// Writes the documents and fragments that the fuzzers start from: make_fuzz_seeds FOLDER makes FOLDER/NAME
// for each fuzzer.

#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>

#include "convert/sample_files.h"
#include "document_input.h"
#include "documents.h"
#include "drawing_text.h"
#include "mutation/rich_documents.h"
#include "safety/script_documents.h"
#include "seed_drawings.h"
#include "seed_pictures.h"
#include "support/named_sprms.h"

using namespace support;

namespace {

void write(const std::filesystem::path& folder, const std::string& name, const Bytes& bytes) {
  std::filesystem::create_directories(folder);
  std::ofstream file(folder / name, std::ios::binary);
  file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  if (!file.flush()) throw std::runtime_error("cannot write " + (folder / name).string());
}

Bytes inputOf(const WordDocument& doc) {
  const WordStreams streams = doc.streams();
  return fuzz::joinStreams({streams.wordDocument, streams.table, streams.data});
}

WordDocument everything(int count) {
  WordDocument doc;
  bench::addStyles(doc);
  for (int i = 0; i < bench::kConstructCount; ++i) bench::kConstructs[i].fill(doc, count);
  return doc;
}

void writeDocuments(const std::filesystem::path& folder) {
  for (int i = 0; i < bench::kConstructCount; ++i) {
    WordDocument doc;
    bench::addStyles(doc);
    bench::kConstructs[i].fill(doc, 3);
    write(folder, bench::kConstructs[i].name, inputOf(doc));
  }
  for (const mutation::NamedDocument& seed : mutation::richDocuments())
    write(folder, seed.name, inputOf(seed.document));
  write(folder, "Everything", inputOf(everything(2)));
  write(folder, "EverythingAsAFile", everything(1).build());
  write(folder, "Drawings", inputOf(fuzz::documentWith(fuzz::seedDrawing())));
  WordDocument word97(WordOptions{.fibPairs = 93, .tableStream = 0});
  word97.paragraph("Word 97, ").run("in bold", {bold()}).run(u" \x0416\x4E2D.");
  write(folder, "Word97", inputOf(word97));
}

/// Those with script also in the ways that their last byte chooses: views and links, or options.
void writeSafePages(const std::filesystem::path& folder) {
  writeDocuments(folder);
  for (const mutation::NamedDocument& seed : safety::scriptDocuments()) {
    Bytes input = inputOf(seed.document);
    input.push_back(0);
    for (uint8_t choice = 0; choice < 16; ++choice) {
      input.back() = choice;
      write(folder, seed.name + std::to_string(choice), input);
    }
  }
}

void writeCompoundFiles(const std::filesystem::path& folder) {
  const auto fill = [](CompoundFileWriter writer) {
    return writer.stream(u"WordDocument", Bytes(5000, 1))
        .stream(u"1Table", Bytes(700, 2))
        .stream(u"ObjectPool/_1/A", Bytes(90, 3))
        .stream(u"S/B", Bytes(4096, 4))
        .bytes();
  };
  write(folder, "Plain", fill(CompoundFileWriter()));
  write(folder, "LargePages", fill(CompoundFileWriter({.pageShift = 12})));
  write(folder, "Chain", fill(CompoundFileWriter({.tree = SiblingTree::kRightChain})));
  write(folder, "Backwards", fill(CompoundFileWriter({.reverseChains = true})));
  write(folder, "NoTinyStreams", fill(CompoundFileWriter({.tinyCutoff = 0})));
}

void writeSprmLists(const std::filesystem::path& folder) {
  const Border line = {.colour = rgb(255, 0, 0), .width = 8};
  write(folder, "Run",
        Sprms{bold(), italic(), fontSize(30), colour(rgb(1, 2, 3)), highlight(3), underline(2),
              letterSpacing(20), characterStyle(12), sprm(0x6805, 77), shadingSprm(0xCA71, {.background = 5})}
            .bytes());
  write(folder, "Paragraph",
        Sprms{align(3), leftIndent(300), firstLine(-300), spaceBefore(1), lineSpacing(-300, false),
              listItem(1, 2), tabsSprm({{720, 1, 2}, {1440, 3, 1}}, {360}), borderSprm(0xC64E, line),
              shadingSprm(0xC64D, {.background = 9}), outlineLevel(2)}
            .bytes());
  write(folder, "Section",
        Sprms{sprm(0xB01F, 11906), sprm(0xB020, 16838), sprm(0x500B, 3), sprm(0x3009, 2),
              sprm(0xF203, Bytes{0, 1, 2}), sprm(0x3005, 1)}
            .bytes());
  write(folder, "Row",
        Sprms{sprm(0x548A, 1), sprm(0x9602, 100),
              defTableSprm({0, 1000, 2000, 3000}, {TableCell{.verticalMerge = 3}, TableCell{}}),
              tableBordersSprm({line, line, line, line, line, line}),
              tableShadingSprm({{.background = 3}, {.background = 4}}),
              cellDistanceSprm(0xD634, 0, 1, 15, 3, 100), sprm(0x9407, -300)}
            .bytes());
}

void writeDrawings(const std::filesystem::path& folder) {
  write(folder, "Everything", fuzz::joinDrawing(fuzz::seedDrawing()));
  for (uint32_t i = 0; i < fuzz::kShapeCount; ++i) {
    write(folder, "Shape" + std::to_string(i), fuzz::joinDrawing(fuzz::seedDrawing(i)));
  }
}

void writeNumberFormats(const std::filesystem::path& folder) {
  const auto input = [](uint8_t dialect, uint8_t language, double number, std::string_view format) {
    ByteWriter bytes;
    bytes.u8(dialect).u8(language).u8(20);
    Bytes image(sizeof(number));
    std::memcpy(image.data(), &number, sizeof(number));
    return bytes.bytes(image).text8(format).take();
  };
  const std::string_view formats[] = {"General",
                                      "#,##0.00_);[Red](#,##0.00)",
                                      "0.00E+00",
                                      "# ?\?/?\?",
                                      "yyyy-mm-dd hh:mm:ss AM/PM",
                                      "[h]:mm:ss.00",
                                      "0%;-0%;\"zero\";@",
                                      "[DBNum1][$-804]0",
                                      "[>100][Blue]0;[<=5]\\x0;*-0",
                                      "aaaa ggge\\d",
                                      "_(* #,##0_);_(* (#,##0);_(* \"-\"_);_(@_)",
                                      "[Color7]ddd d mmmm yy;@"};
  int number = 0;
  for (const std::string_view format : formats) {
    for (uint8_t dialect = 0; dialect < 5; ++dialect) {
      const auto language = static_cast<uint8_t>(number % 8 << 4 | 1);
      write(folder, std::to_string(number), input(dialect, language, 1234.5 * number - 500, format));
      ++number;
    }
  }
}

void writeHyperlinks(const std::filesystem::path& folder) {
  const auto head = [](uint32_t flags) { return ByteWriter().zeros(16).u32(2).u32(flags); };
  const auto text = [](ByteWriter& to, std::u16string_view value, bool inBytes) {
    const size_t units = value.size() + 1;
    to.u32(static_cast<uint32_t>(inBytes ? units * 2 : units)).text16(value).u16(0);
  };
  const Bytes urlMoniker = {0xE0, 0xC9, 0xEA, 0x79, 0xF9, 0xBA, 0xCE, 0x11,
                            0x8C, 0x82, 0x00, 0xAA, 0x00, 0x4B, 0xA9, 0x0B};
  const Bytes fileMoniker = {0x03, 0x03, 0, 0, 0, 0, 0, 0, 0xC0, 0, 0, 0, 0, 0, 0, 0x46};
  ByteWriter url = head(0x01 | 0x02 | 0x04 | 0x08 | 0x80);
  text(url, u"display", false);
  text(url, u"frame", false);
  url.bytes(urlMoniker);
  text(url, u"http://www.example.com/", true);
  text(url, u"place", false);
  write(folder, "Url", url.take());
  ByteWriter file = head(0x01);
  file.bytes(fileMoniker)
      .u16(0)
      .u32(6)
      .text8("a.doc")
      .u8(0)
      .zeros(24)
      .u32(16)
      .u32(10)
      .u16(3)
      .text16(u"a.doc");
  write(folder, "File", file.take());
  ByteWriter plain = head(0x01 | 0x100);
  text(plain, u"plain", false);
  write(folder, "Plain", plain.take());
  ByteWriter place = head(0x08);
  text(place, u"place", false);
  write(folder, "Place", place.take());
  write(folder, "Field", bytesOf(" HYPERLINK \"http://www.example.com/a?b=c\" \\l \"place\" \\o \"A tip\" "));
}

void writeFiles(const std::filesystem::path& folder) {
  for (const SampleFile& file : sampleFiles()) write(folder, file.name, file.bytes);
}

void writePictures(const std::filesystem::path& folder, const std::vector<fuzz::SeedPicture>& pictures,
                   const std::string& before = "", const Bytes& head = {}) {
  for (const fuzz::SeedPicture& each : pictures)
    write(folder, before + each.name, ByteWriter().bytes(head).bytes(each.bytes).take());
}

void writeAllPictures(const std::filesystem::path& folder) {
  writePictures(folder / "wmf", fuzz::seedWmfs());
  writePictures(folder / "emf", fuzz::seedEmfs());
  writePictures(folder / "emf_plus", fuzz::seedEmfPluses());
  // All pixels as they are, and a part of them with all that can be made of it.
  writePictures(folder / "dib", fuzz::seedDibs(), "Plain", Bytes(16, 0));
  writePictures(folder / "dib", fuzz::seedDibs(), "Part",
                ByteWriter().u8(31).u8(1).u8(6).u8(1).u16(1).u16(2).u16(5).u16(4).u32(0).take());
  const std::filesystem::path all = folder / "web_picture";
  writePictures(all, fuzz::seedWmfs(), "Wmf");
  writePictures(all, fuzz::seedEmfs(), "Emf");
  writePictures(all, fuzz::seedTiffs(), "Tiff");
  writePictures(all, fuzz::seedPicts(), "Pict");
  writePictures(all, fuzz::seedDibs(), "Dib");
  writePictures(all, fuzz::seedDibs(), "Bmp", ByteWriter().text8("BM").u32(300).u32(0).u32(54).take());
  for (const SampleFile& file : sampleFiles()) write(all, file.name, file.bytes);
}

int makeAll(const std::filesystem::path& folder) {
  for (const char* view :
       {"normal_view", "phone_view", "mulpages_view", "preview_view", "document_model", "convert", "flow"}) {
    writeDocuments(folder / view);
  }
  writeSafePages(folder / "safe_pages");
  writeSafePages(folder / "html_page");
  writeCompoundFiles(folder / "compound_file");
  writeSprmLists(folder / "sprm_list");
  writeDrawings(folder / "drawing");
  writeNumberFormats(folder / "number_format");
  writeHyperlinks(folder / "hyperlink");
  writeFiles(folder / "detect");
  writeAllPictures(folder);
  return 0;
}

}  // namespace

int main(int argc, char** argv) try {
  if (argc == 2) return makeAll(argv[1]);
  std::fprintf(stderr, "usage: make_fuzz_seeds FOLDER\n");
  return 1;
} catch (const std::exception& error) {
  std::fprintf(stderr, "make_fuzz_seeds: %s\n", error.what());
  return 1;
}
