#ifndef PAGEREX_CONVERT_H
#define PAGEREX_CONVERT_H

/* Documents in memory. Usable from C and C++.
 *
 * Any number of threads may call any of these functions at once. They set no locale and need none, and change
 * nothing outside what they are given. No exception leaves them. */

#include <stddef.h>

#include "pagerex/pagerex.h"

#ifdef __cplusplus
extern "C" {
#endif

/* --- What a file is ------------------------------------------------------------------------------------ */

/* Kinds of files. A number once given stays; later versions may add some. */
enum {
  PAGEREX_KIND_UNKNOWN = 0,
  PAGEREX_KIND_EMPTY = 1, /* no bytes at all */
  PAGEREX_KIND_TEXT = 2,  /* plain text, in whatever code */

  /* Word's own */
  PAGEREX_KIND_WORD97 = 10,         /* Word 97-2003, not encrypted: what PageRex converts */
  PAGEREX_KIND_WORD95 = 11,         /* Word 6 and 95 */
  PAGEREX_KIND_WORD_EARLY = 12,     /* Word for DOS, 1 and 2 for Windows, 1 to 5 for Macintosh; Write */
  PAGEREX_KIND_WORD_ENCRYPTED = 13, /* Word 6 to 2003 */

  /* other compound files */
  PAGEREX_KIND_COMPOUND = 20, /* none of the following, or not to be told */
  PAGEREX_KIND_XLS = 21,
  PAGEREX_KIND_PPT = 22,
  PAGEREX_KIND_MSG = 23,
  PAGEREX_KIND_MSI = 24,
  PAGEREX_KIND_OOXML_ENCRYPTED = 25, /* docx, xlsx, pptx: the password tells which */

  /* archives */
  PAGEREX_KIND_ZIP = 30, /* none of the following */
  PAGEREX_KIND_DOCX = 31,
  PAGEREX_KIND_XLSX = 32,
  PAGEREX_KIND_PPTX = 33,
  PAGEREX_KIND_OOXML = 34, /* another Office Open XML package, or one whose beginning does not tell */
  PAGEREX_KIND_ODT = 35,
  PAGEREX_KIND_ODS = 36,
  PAGEREX_KIND_ODP = 37,
  PAGEREX_KIND_ODF = 38, /* another OpenDocument file */

  /* marked-up text */
  PAGEREX_KIND_RTF = 40,
  PAGEREX_KIND_HTML = 41,
  PAGEREX_KIND_MHTML = 42,  /* begins with the headers of a MIME message */
  PAGEREX_KIND_XML = 43,    /* other than the next */
  PAGEREX_KIND_WORDML = 44, /* Word 2003 XML */

  PAGEREX_KIND_WORDPERFECT = 50,
  PAGEREX_KIND_PDF = 51
};

/* Tells from the bytes of a file what it is, whatever its name says: one of the kinds above. Reads in place,
 * allocates nothing, and takes a time that grows with `size` at most.
 *
 * `data` holds the whole file, or the first `size` bytes of it. How many are needed:
 *   4 KB        text, marked-up text, PDF, WordPerfect, and which of these families it is: early Word,
 * compound file, archive, with OpenDocument told apart. More if markup begins with long comments. whole file
 * which of the compound files: their directory may stand anywhere. Without it, the answer is
 *               PAGEREX_KIND_COMPOUND.
 *   whole file  which of the archives: their directory stands at the end. Without it the answer is drawn from
 *               the entries whose beginning is there, PAGEREX_KIND_ZIP or PAGEREX_KIND_OOXML if they do not
 *               tell.
 * A null `data` counts as empty. The answer is no promise that the file is sound. */
PAGEREX_API int pagerex_detect(const void* data, size_t size);

/* A short word for reports, which stays as it is: "docx". That of PAGEREX_KIND_UNKNOWN for any number that is
 * no kind. Never null; a constant. */
PAGEREX_API const char* pagerex_kind_name(int kind);

/* One sentence in English for those who see the message: "This is a Word document of 2007 or later (.docx)."
 * As above otherwise, but that the wording may change. */
PAGEREX_API const char* pagerex_kind_sentence(int kind);

#ifdef __cplusplus
}
#endif

#endif
