// Each field of what a host gets of all else: values that all differ, handed to the adapter itself.

#include "flow/handed.h"
#include "support/property_sets.h"

using namespace flow_test;

namespace pagerex {

TEST(HostFacts, OfTheDocument) {
  const auto told = [](void*, const pagerex_document_facts* f) {
    const pagerex_text texts[] = {f->title,          f->subject,       f->author,      f->keywords,
                                  f->comments,       f->template_name, f->last_author, f->revision_number,
                                  f->application,    f->category,      f->manager,     f->company,
                                  f->content_status, f->language_name};
    std::string all;
    for (const pagerex_text& text : texts) all += spelled(text);
    EXPECT_EQ(all, "abcdefghijklmn");
    EXPECT_EQ(f->created, 1078131600);  // 2004-03-01 09:00
    EXPECT_EQ(f->saved, 1078131601);
    EXPECT_EQ(f->printed, 0);
    EXPECT_EQ(f->editing_seconds, 90);
    EXPECT_EQ(f->pages, 1);
    EXPECT_EQ(f->words, 2);
    EXPECT_EQ(f->characters, 3);
    EXPECT_EQ(f->characters_with_spaces, 4);
    EXPECT_EQ(f->lines, 5);
    EXPECT_EQ(f->paragraphs, 6);
    EXPECT_EQ(f->security, 7);
    EXPECT_EQ(f->page_count, 8u);
    EXPECT_EQ(f->language, 0x0407);
    EXPECT_EQ(f->default_tab_stop, 709);
    EXPECT_EQ(f->has_odd_even_headers, 1);
    EXPECT_EQ(f->custom_count, 2u);
    EXPECT_EQ(spelled(f->custom[0].name), "Client");
    EXPECT_EQ(f->custom[0].kind, PAGEREX_PROPERTY_TEXT);
    EXPECT_EQ(spelled(f->custom[0].text), "X");
    EXPECT_EQ(spelled(f->custom[1].name), "Due");
    EXPECT_EQ(f->custom[1].kind, PAGEREX_PROPERTY_TIME);
    EXPECT_EQ(f->custom[1].time, 1078131600);
    return 1;
  };
  DocumentSummary s;
  std::u16string* const texts[] = {&s.title,         &s.subject,      &s.author,     &s.keywords,
                                   &s.comments,      &s.templateName, &s.lastAuthor, &s.revisionNumber,
                                   &s.application,   &s.category,     &s.manager,    &s.company,
                                   &s.contentStatus, &s.language};
  char16_t letter = u'a';
  for (std::u16string* const text : texts) *text = letter++;
  s.created = support::fileTime(2004, 3, 1, 9), s.saved = support::fileTime(2004, 3, 1, 9, 0, 1);
  s.editingTime = 900'000'000;
  s.pages = 1, s.words = 2, s.characters = 3, s.charactersWithSpaces = 4, s.lines = 5, s.paragraphs = 6;
  s.security = 7;
  s.custom = {{u"Client", CustomProperty::Kind::kText, u"X", 0, 0, 0},
              {u"Due", CustomProperty::Kind::kTime, u"", 0, 0, s.created}};
  pagerex_handler host = {};
  host.size = sizeof host;
  host.begin_document = told;
  RunControl control;
  HostHandler(host, nullptr, control).BeginDocument({s, 0x0407, 709, true, 8});
  EXPECT_EQ(control.cause(), StopCause::kCanceled);
}

TEST(HostFacts, OfASection) {
  Handed<pagerex_section> handed(&pagerex_handler::begin_section, [](const pagerex_section& s) {
    EXPECT_EQ(s.index, 1u);
    EXPECT_EQ(s.start, PAGEREX_SECTION_ODD_PAGE);
    EXPECT_EQ(s.page_width, 2);
    EXPECT_EQ(s.page_height, 3);
    EXPECT_EQ(s.is_landscape, 1);
    EXPECT_EQ(s.margin_top, -4);
    EXPECT_EQ(s.margin_bottom, 5);
    EXPECT_EQ(s.margin_left, 6);
    EXPECT_EQ(s.margin_right, 7);
    EXPECT_EQ(s.gutter, 8);
    EXPECT_EQ(s.header_distance, 9);
    EXPECT_EQ(s.footer_distance, 10);
    EXPECT_EQ(s.column_count, 11u);
    EXPECT_EQ(s.has_line_between_columns, 0);
    ASSERT_EQ(s.columns_told, 2u);
    EXPECT_EQ(s.columns[1].width, 14);
    EXPECT_EQ(s.columns[1].space, 15);
    EXPECT_EQ(s.column_space, 16);
    EXPECT_EQ(s.has_title_page, 1);
    EXPECT_EQ(s.is_right_to_left, 0);
    EXPECT_EQ(s.text_flow, 17);
    EXPECT_EQ(s.page_number_format, 18);
    EXPECT_EQ(s.restarts_page_numbers, 1);
    EXPECT_EQ(s.first_page_number, 19);
    EXPECT_EQ(s.vertical_alignment, 3);
    expectBorder(s.page_top, 1);
    expectBorder(s.page_left, 2);
    expectBorder(s.page_bottom, 3);
    expectBorder(s.page_right, 4);
    EXPECT_EQ(s.footnotes.sets_start, 1);
    EXPECT_EQ(s.footnotes.start, 20);
    EXPECT_EQ(s.footnotes.sets_restart, 0);
    EXPECT_EQ(s.endnotes.sets_restart, 1);
    EXPECT_EQ(s.endnotes.restart, 2);
    EXPECT_EQ(s.endnotes.sets_format, 1);
    EXPECT_EQ(s.endnotes.format, 21);
    EXPECT_EQ(s.header_sections[0][2], -1);
    EXPECT_EQ(s.header_sections[1][0], 23);
  });
  SectionProperties p;
  p.start = SectionProperties::Start::kOddPage, p.pageWidth = 2, p.pageHeight = 3, p.isLandscape = true;
  p.marginTop = -4, p.marginBottom = 5, p.marginLeft = 6, p.marginRight = 7, p.gutter = 8;
  p.headerDistance = 9, p.footerDistance = 10, p.columnCount = 11;
  p.columns = {{12, 13}, {14, 15}};
  p.columnSpace = 16, p.hasTitlePage = true, p.textFlow = 17, p.pageNumberFormat = 18;
  p.restartsPageNumbers = true, p.firstPageNumber = 19, p.verticalAlignment = 3;
  p.pageTop = border(1), p.pageLeft = border(2), p.pageBottom = border(3), p.pageRight = border(4);
  p.footnotes.setsStart = true, p.footnotes.start = 20;
  p.endnotes.setsRestart = true, p.endnotes.restart = 2, p.endnotes.setsFormat = true, p.endnotes.format = 21;
  handed.handler.BeginSection({p, 1, {{0, 1, -1}, {23, 24, 25}}});
  EXPECT_EQ(handed.calls, 1);
}

TEST(HostFacts, OfHeadersNotesCommentsAndRevisions) {
  Handed<pagerex_header> header(&pagerex_handler::begin_header, [](const pagerex_header& h) {
    EXPECT_EQ(h.kind, PAGEREX_HEADER_FIRST);
    EXPECT_EQ(h.is_footer, 1);
  });
  header.handler.BeginHeader({HeaderKind::kFirst, true});
  Handed<pagerex_note> note(&pagerex_handler::begin_note, [](const pagerex_note& n) {
    EXPECT_EQ(n.kind, PAGEREX_NOTE_ENDNOTE);
    EXPECT_EQ(n.index, 2u);
    EXPECT_EQ(spelled(n.label), "*");
    EXPECT_EQ(n.is_custom, 1);
  });
  note.handler.BeginNote({NoteKind::kEndnote, 2, u"*", true});
  Handed<pagerex_comment> comment(&pagerex_handler::comment_reference, [](const pagerex_comment& c) {
    EXPECT_EQ(c.index, 3u);
    EXPECT_EQ(spelled(c.author), "Ada");
    EXPECT_EQ(spelled(c.initials), "A");
    expectDate(c.date);
  });
  comment.handler.CommentReference({3, u"Ada", u"A", kDttm});
  Handed<pagerex_revision> revision(&pagerex_handler::begin_revision, [](const pagerex_revision& r) {
    EXPECT_EQ(r.kind, PAGEREX_CHANGE_MOVED_AWAY);
    EXPECT_EQ(spelled(r.author), "Bob");
    expectDate(r.date);
  });
  revision.handler.BeginRevision({Revision::kMovedAway, u"Bob", kDttm});
  EXPECT_EQ(header.calls + note.calls + comment.calls + revision.calls, 4);
}

TEST(HostFacts, OfLinks) {
  Handed<pagerex_link> handed(&pagerex_handler::begin_link, [](const pagerex_link& l) {
    EXPECT_EQ(spelled(l.address), "a");
    EXPECT_EQ(spelled(l.bookmark), "b");
    EXPECT_EQ(spelled(l.title), "c");
    EXPECT_EQ(spelled(l.target), "d");
  });
  handed.handler.BeginLink({u"a", u"b", u"c", u"d"});
  EXPECT_EQ(handed.calls, 1);
}

TEST(HostFacts, OfPictures) {
  Handed<pagerex_picture> handed(&pagerex_handler::picture, [](const pagerex_picture& p) {
    EXPECT_EQ(spelled(p.description), "a");
    EXPECT_EQ(spelled(p.name), "b");
    EXPECT_EQ(spelled(p.linked_address), "c");
    EXPECT_EQ(p.width, 1);
    EXPECT_EQ(p.height, 2);
    EXPECT_EQ(p.is_inline, 0);
    EXPECT_EQ(p.wrap, 3);
    EXPECT_EQ(p.is_behind_text, 1);
    EXPECT_EQ(p.left, -4);
    EXPECT_EQ(p.top, 5);
    EXPECT_EQ(p.identity, 6u);
    EXPECT_EQ(p.source, nullptr);
  });
  handed.handler.Picture({u"a", u"b", 1, 2, false, 3, true, -4, 5, nullptr, 6, u"c"});
  EXPECT_EQ(handed.calls, 1);
}

TEST(HostFacts, OfTheBytesOfPictures) {
  class Source final : public PictureSource {
    PictureData Read() override { return {PictureType::kWmf, ByteView(bytes, 3), true, 9}; }
    const uint8_t bytes[3] = {1, 2, 3};
  } source;
  Handed<pagerex_picture> handed(&pagerex_handler::picture, [](const pagerex_picture& p) {
    pagerex_picture_data data = {};
    data.size = sizeof data;
    ASSERT_EQ(pagerex_picture_read(&p, &data), PAGEREX_RESULT_OK);
    EXPECT_EQ(data.type, PAGEREX_PICTURE_WMF);
    EXPECT_EQ(data.is_deflated, 1);
    ASSERT_EQ(data.length, 3u);
    EXPECT_EQ(static_cast<const uint8_t*>(data.data)[2], 3);
    EXPECT_EQ(data.raw_length, 9u);
  });
  PictureFacts facts;
  facts.source = &source;
  handed.handler.Picture(facts);
  EXPECT_EQ(handed.calls, 1);
}

TEST(HostFacts, EndTheWalkWhereAPictureNeedsMoreMemoryThanThereIs) {
  class Source final : public PictureSource {
    PictureData Read() override { throw std::bad_alloc(); }
  } source;
  Handed<pagerex_picture> handed(&pagerex_handler::picture, [](const pagerex_picture& p) {
    pagerex_picture_data data = {};
    data.size = sizeof data;
    EXPECT_EQ(pagerex_picture_read(&p, &data), PAGEREX_RESULT_OUT_OF_MEMORY);
    EXPECT_EQ(data.length, 0u);
  });
  PictureFacts facts;
  facts.source = &source;
  EXPECT_THROW(handed.handler.Picture(facts), std::bad_alloc);
}

TEST(HostFacts, TellWhereAPictureCannotBeRead) {
  class Source final : public PictureSource {
    PictureData Read() override { throw 1; }
  } source;
  Handed<pagerex_picture> handed(&pagerex_handler::picture, [](const pagerex_picture& p) {
    pagerex_picture_data data = {};
    data.size = sizeof data;
    EXPECT_EQ(pagerex_picture_read(&p, &data), PAGEREX_RESULT_UNREADABLE);
  });
  PictureFacts facts;
  facts.source = &source;
  handed.handler.Picture(facts);
  EXPECT_EQ(handed.calls, 1);
}

TEST(HostFacts, OfTables) {
  Handed<pagerex_table> handed(&pagerex_handler::begin_table, [](const pagerex_table& t) {
    EXPECT_EQ(t.depth, 2u);
    EXPECT_EQ(t.is_right_to_left, 1);
    EXPECT_EQ(t.alignment, PAGEREX_ALIGN_CENTRE);
    EXPECT_EQ(t.indent, -3);
    EXPECT_EQ(t.width, 4);
    EXPECT_EQ(t.width_kind, 3);
    ASSERT_EQ(t.column_count, 2u);
    EXPECT_EQ(t.column_widths[1], 6);
    EXPECT_EQ(t.row_count, 7u);
    EXPECT_EQ(t.header_row_count, 1u);
    EXPECT_EQ(t.is_regular, 0);
    EXPECT_EQ(t.has_merged_cells, 1);
    EXPECT_EQ(t.has_single_paragraphs, 0);
    EXPECT_EQ(t.floats, 1);
    EXPECT_EQ(t.style_index, 7u);
    EXPECT_EQ(spelled(t.style), "Strong");
  });
  handed.handler.BeginTable(
      {2, true, Alignment::kCentre, -3, 4, 3, {5, 6}, 7, 1, false, true, false, 7, true});
  EXPECT_EQ(handed.calls, 1);
}

TEST(HostFacts, OfRowsAndCells) {
  Handed<pagerex_row> row(&pagerex_handler::begin_row, [](const pagerex_row& r) {
    EXPECT_EQ(r.is_header, 1);
    EXPECT_EQ(r.cant_split, 0);
    EXPECT_EQ(r.height, -2);
    EXPECT_EQ(r.is_exact_height, 1);
    EXPECT_EQ(r.columns_before, 3u);
    EXPECT_EQ(r.columns_after, 4u);
    EXPECT_EQ(r.change.kind, PAGEREX_CHANGE_INSERTED);
    EXPECT_EQ(r.change.author, 5u);
  });
  row.handler.BeginRow({true, false, -2, true, 3, 4, {Revision::kInserted, 5, 0}});
  Handed<pagerex_cell> cell(&pagerex_handler::begin_cell, [](const pagerex_cell& c) {
    EXPECT_EQ(c.left, -1);
    EXPECT_EQ(c.width, 2);
    EXPECT_EQ(c.column_span, 3u);
    EXPECT_EQ(c.row_span, 0u);
    EXPECT_EQ(c.vertical_alignment, 2);
    EXPECT_EQ(c.text_flow, 4);
    EXPECT_EQ(c.no_wrap, 1);
    expectBorder(c.top, 1);
    expectBorder(c.start, 2);
    expectBorder(c.bottom, 3);
    expectBorder(c.end, 4);
    EXPECT_EQ(c.shading.is_there, 1);
    EXPECT_EQ(c.shading.fill.rgb, 0x010203u);
    EXPECT_EQ(c.padding_top, 5);
    EXPECT_EQ(c.padding_start, 6);
    EXPECT_EQ(c.padding_bottom, 7);
    EXPECT_EQ(c.padding_end, 8);
  });
  cell.handler.BeginCell({-1,
                          2,
                          3,
                          0,
                          2,
                          4,
                          true,
                          border(1),
                          border(2),
                          border(3),
                          border(4),
                          {true, {0x010203, false}},
                          5,
                          6,
                          7,
                          8});
  EXPECT_EQ(row.calls + cell.calls, 2);
}

}  // namespace pagerex
