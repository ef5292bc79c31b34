#ifndef PAGEREX_CONVERT_H
#define PAGEREX_CONVERT_H

/* Documents from memory, files or a host's own store, into memory, files or a host's own sink. Usable from
 * C99 and C++.
 *
 *     pagerex_input input = {.size = sizeof input, .data = bytes, .length = count};
 *     pagerex_output output = {.size = sizeof output, .begin = ..., .write = ..., .end = ...};
 *     pagerex_result result = {.size = sizeof result};
 *     if (pagerex_convert(&input, NULL, NULL, &output, &result) != PAGEREX_RESULT_OK) puts(result.sentence);
 *
 * Any number of threads may call any of these functions at once, each document handle being used by one at a
 * time. They set no locale and need none, and change nothing outside what they are given. No exception leaves
 * them; one that leaves a host's function ends the call with PAGEREX_RESULT_CANCELED. A conversion raises one
 * signal only, SIGXFSZ, and only to a path and where the host has set RLIMIT_FSIZE: ignore it there.
 *
 * Structures begin with their own size, which the host sets to sizeof: what a later version adds behind the
 * end of a host's structure is not looked at, or not filled in. All other fields may be zero, which stands
 * for what is usual. A structure whose size is less than that of its first version is refused as
 * PAGEREX_RESULT_INVALID_ARGUMENT. Nothing that is passed is kept longer than the call, but for the input,
 * which a document reads from until it is closed. */

#include <stddef.h>
#include <stdint.h>

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
  PAGEREX_KIND_PDF = 51,

  /* pictures */
  PAGEREX_KIND_EMF = 61,  /* enhanced metafile, with or without EMF+ in it */
  PAGEREX_KIND_WMF = 62,  /* Windows metafile, with or without the header of a placeable one */
  PAGEREX_KIND_PICT = 63, /* Macintosh PICT */
  PAGEREX_KIND_DIB = 64,  /* a bitmap from its header on, as documents have it */
  PAGEREX_KIND_BMP = 65,  /* the same as a file */
  PAGEREX_KIND_TIFF = 66,
  PAGEREX_KIND_PNG = 67,
  PAGEREX_KIND_JPEG = 68,
  PAGEREX_KIND_GIF = 69
};

/* Tells from the bytes of a file what it is, whatever its name says: one of the kinds above. Reads in place,
 * allocates nothing, and takes a time that grows with `size` at most.
 *
 * `data` holds the whole file, or the first `size` bytes of it. How many are needed:
 *   4 KB        text, marked-up text, PDF, WordPerfect, pictures, and which of these families it is: early
 *               Word, compound file, archive, with OpenDocument told apart. More if markup begins with long
 *               comments.
 *   whole file  which of the compound files: their directory may stand anywhere. Without it, the answer is
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

/* --- What came of a call ------------------------------------------------------------------------------- */

/* Numbers once given stay; later versions may add some. */
enum {
  PAGEREX_RESULT_OK = 0,
  PAGEREX_RESULT_INVALID_ARGUMENT = 1, /* a null pointer, an unknown format, a size that is none */
  PAGEREX_RESULT_NOT_WORD = 2,         /* `kind` tells what it is instead */
  PAGEREX_RESULT_ENCRYPTED = 3,
  PAGEREX_RESULT_DAMAGED = 4,    /* a Word document of which nothing can be read, or not to its end */
  PAGEREX_RESULT_UNREADABLE = 5, /* no such file, no right to read it, a folder, a device, a pipe; a read that
                                    failed; `system_error` may tell why */
  PAGEREX_RESULT_CANNOT_WRITE = 6,   /* a sink that refused, a full disk, a folder that is not there */
  PAGEREX_RESULT_REFUSED = 7,        /* the output would destroy what no conversion has made */
  PAGEREX_RESULT_CANCELED = 8,       /* by the flag, or by a function of the host */
  PAGEREX_RESULT_DEADLINE = 9,       /* limits.deadline_ms went by */
  PAGEREX_RESULT_OUT_OF_MEMORY = 10, /* the machine has no more */
  PAGEREX_RESULT_MEMORY_LIMIT = 11,  /* limits.memory was reached */
  PAGEREX_RESULT_OUTPUT_LIMIT = 12,  /* limits.output_bytes was reached */
  PAGEREX_RESULT_TOO_LARGE = 13,     /* limits.input_bytes, or what the format can hold, is exceeded */
  PAGEREX_RESULT_NOT_PICTURE = 14    /* of pagerex_convert_picture: `kind` tells what it is instead */
};

/* A short word for reports, which stays as it is: "ok", "not_word". "unknown" for any other number. Never
 * null; a constant. */
PAGEREX_API const char* pagerex_result_name(int code);

/* What of a document was left out of the output or mended on the way. Numbers once given stay. */
enum {
  PAGEREX_WARNING_TABLE_DAMAGED = 1, /* a table of the file cannot be read whole; where: its name */
  PAGEREX_WARNING_OUTSIDE = 2, /* the file refers to bytes that it does not have; where: for what, if known */
  PAGEREX_WARNING_ENDED_EARLY = 3,  /* the text ends before the document's end; where: the character */
  PAGEREX_WARNING_WORK_LIMIT = 4,   /* tables refer to the same things again and again; where: which work */
  PAGEREX_WARNING_OUTPUT_FULL = 5,  /* far more output than a sound document makes */
  PAGEREX_WARNING_PICTURE = 6,      /* a picture that is not there, or cannot be read */
  PAGEREX_WARNING_LINK_REMOVED = 7, /* an address that the option `links` does not keep; where: its scheme */
  PAGEREX_WARNING_PICTURES_OFF = 8, /* pictures were not wanted */
  PAGEREX_WARNING_FILE_SHORT = 9,   /* the file ends before its own tables say so */
  PAGEREX_WARNING_STOPPED = 10      /* a page size, or the host, ended the text before its end */
};

typedef struct pagerex_warning {
  int32_t code;         /* PAGEREX_WARNING_... */
  int32_t lost;         /* 1: something of the document is missing in the output. 0: mended, or meant so */
  uint32_t count;       /* how often; `where` is the first time */
  char where[52];       /* UTF-8; may be empty */
  const char* sentence; /* in English; a constant */
} pagerex_warning;

/* Of the document's main text and what is anchored in it. */
typedef struct pagerex_counts {
  uint64_t characters; /* UTF-16 units of text, marks of paragraphs, cells and fields among them */
  uint64_t paragraphs; /* those in cells among them */
  uint64_t tables;     /* not counting those within others */
  uint64_t pictures;   /* in the line and floating, whatever their kind; of a result: picture files */
  uint64_t pages; /* of a result: pages written. Of a document: as Word counted them last, 0 if not told */
} pagerex_counts;

enum { PAGEREX_MOST_WARNINGS = 32 };

/* What the value of a property is that someone gave a name. */
enum {
  PAGEREX_PROPERTY_TEXT = 0,
  PAGEREX_PROPERTY_INTEGER = 1,
  PAGEREX_PROPERTY_REAL = 2,    /* "0.5" */
  PAGEREX_PROPERTY_BOOLEAN = 3, /* "true" or "false" */
  PAGEREX_PROPERTY_TIME = 4     /* "2004-03-01T12:00:00Z" */
};

typedef struct pagerex_property {
  char name[64];
  char value[192];
  int32_t kind; /* PAGEREX_PROPERTY_... */
} pagerex_property;

enum { PAGEREX_MOST_PROPERTIES = 16 };

/* What a document says of itself. Texts are UTF-8 on one line, cut between characters where they are longer;
 * times are UTC, "2004-03-01T12:00:00Z". What is not told is empty or 0. The counts are as the program that
 * saved it last told them, and may be wrong. */
typedef struct pagerex_summary {
  char title[256];
  char subject[256];
  char author[128];
  char last_author[128];
  char keywords[256];
  char comments[512];
  char category[128];
  char manager[128];
  char company[128];
  char template_name[128];
  char application[64];
  char revision[32];
  char language[32]; /* BCP 47, "de-DE": as the document tells it, else that of its style "Normal" */
  char created[24];
  char saved[24];
  char printed[24];
  uint32_t editing_minutes;
  uint32_t pages;
  uint32_t words;
  uint32_t characters; /* without spaces */
  uint32_t paragraphs;
  uint32_t lines;
  uint32_t security;     /* bits: 1 password, 2 read-only recommended, 4 read-only enforced, 8 locked */
  uint32_t custom_count; /* of `custom`, at most PAGEREX_MOST_PROPERTIES: the first ones */
  pagerex_property custom[PAGEREX_MOST_PROPERTIES];
} pagerex_summary;

/* Filled in by a call, wholly, whatever comes of it. Needs no release. */
typedef struct pagerex_result {
  size_t size;
  int32_t code;          /* as the call returned it */
  int32_t kind;          /* PAGEREX_KIND_...; PAGEREX_KIND_UNKNOWN where the input could not be read */
  int32_t system_error;  /* a value of errno that explains `code`; 0 for none */
  int32_t complete;      /* 1: PAGEREX_RESULT_OK, and no warning says that something is lost */
  char sentence[256];    /* in English, UTF-8: what came of the call, and what the file is */
  pagerex_counts counts; /* of what was written; of pagerex_open: 0 */
  uint64_t output_bytes; /* that were written, all files together */
  uint32_t output_files;
  uint32_t warning_count; /* of `warnings`, at most PAGEREX_MOST_WARNINGS: one for each code and place, the */
  uint64_t warnings_total; /* first ones. This counts all, each as often as it was given */
  pagerex_warning warnings[PAGEREX_MOST_WARNINGS];
  pagerex_summary summary; /* of the document; of pagerex_open, and where it could not be opened: nothing */
} pagerex_result;

/* --- What is read -------------------------------------------------------------------------------------- */

/* One of three: a path, a block of memory, or functions of the host. */
typedef struct pagerex_input {
  size_t size;
  /* The file is opened for reading alone, must be a regular file, and stays open until the document is
   * closed. Named as the C library takes it. */
  const char* path;
  /* Read in place: it must stay as it is until the document is closed. Not null, but `length` may be 0. */
  const void* data;
  size_t length;
  /* The count of bytes, negative for a failure; and `length` bytes from `offset` on into `buffer`: the count
   * of those read, fewer only where the input ends, negative for a failure. Both or none. Called on the
   * thread of the call. */
  int64_t (*byte_count)(void* user);
  int64_t (*read_at)(void* user, uint64_t offset, void* buffer, size_t length);
  void* user;
} pagerex_input;

/* 0 stands for no limit. */
typedef struct pagerex_limits {
  size_t size;
  /* Bytes that what is read of a document may take from the heap: its text, tables, properties and pictures.
   * What writes it takes up to 1 MB more, whatever the document, embedded pictures some times the size of
   * the input, and a metafile while it is converted what it is inflated. */
  uint64_t memory;
  uint64_t input_bytes;  /* of the input */
  uint64_t output_bytes; /* of all files together */
  uint64_t deadline_ms;  /* from the beginning of the call on */
  /* Ends the call soon after it becomes other than 0: see pagerex_cancel. May be null. */
  const int* cancel;
} pagerex_limits;

/* Sets a flag of pagerex_limits; from any thread, and from a signal handler. Null is accepted. */
PAGEREX_API void pagerex_cancel(int* flag);

/* --- What is written ----------------------------------------------------------------------------------- */

/* One of two: a path, or functions of the host. */
typedef struct pagerex_output {
  size_t size;
  /* The main file. Formats that write more files put them into the folder beside it that takes its name with
   * ".files" in the place of the extension: "letter.html" and "letter.files". A result appears whole or not
   * at all: it is made under other names in the same folder, and takes the place of an older one in the end.
   * What no conversion has made is not replaced, and PAGEREX_RESULT_REFUSED: a Word document, the input, a
   * folder that holds other files than those of a conversion. A format of one file leaves that folder alone.
   */
  const char* path;
  /* A file begins. `name` is `main_name`, or a path below it with "/" between its parts, and comes once;
   * `media_type` is that of the file: "text/html; charset=utf-8". Both are valid during the call. Returns the
   * file, which is handed to the two below, or null to refuse. Several files may be open at a time. */
  void* (*begin)(void* user, const char* name, const char* media_type);
  /* 0 for success; anything else refuses, which ends the conversion. */
  int (*write)(void* user, void* file, const void* data, size_t length);
  /* Each file that was begun ends. `complete` is 0 where the conversion broke off: what it holds is no whole
   * file. Returns 0 for success. May be null. */
  int (*end)(void* user, void* file, int complete);
  void* user;
  /* Name of the main file for the functions above; null for "document" with the extension of the format. No
   * "/" and no control characters in it. */
  const char* main_name;
} pagerex_output;

/* What becomes of the addresses of a document, in links and in pictures that are only linked. */
enum {
  PAGEREX_LINKS_SAFE = 0, /* http, https, mailto, ftp, ftps, sftp, tel, sms, news, relative ones and "#..."
                             are kept; of others the text stays and the address goes, with a warning */
  PAGEREX_LINKS_ALL = 1,
  PAGEREX_LINKS_NONE = 2
};

/* What becomes of its pictures. A format that cannot do what is asked refuses, as invalid argument. "html"
 * and "markdown" have them as browsers read them, and as the document has them where nothing can be made of
 * one; the other formats have them as the document has them. */
enum {
  PAGEREX_PICTURES_USUAL = 0, /* "html" embeds them; else as files where the format has a folder, or none */
  PAGEREX_PICTURES_FILES = 1,
  PAGEREX_PICTURES_EMBEDDED = 2,
  PAGEREX_PICTURES_NONE = 3,
  PAGEREX_PICTURES_WEB = 4 /* of "normal", "phone" and "mulpages": as files, and beside each that browsers do
                              not read one that they do, which the pages show */
};

/* Which state of a document with tracked changes is written. */
enum {
  PAGEREX_REVISIONS_FINAL = 0,    /* with all changes made */
  PAGEREX_REVISIONS_ORIGINAL = 1, /* without them */
  PAGEREX_REVISIONS_ALL = 2       /* what was inserted, and what was deleted, each marked as such */
};

typedef struct pagerex_options {
  size_t size;
  const char* format; /* a name of pagerex_format_at: "html"; null for that of the first, "normal" */
  int64_t page_size;  /* characters on a page, in a piece of "html", or in all in the format "preview"; 0 for
                         what the format has, which is one page in "html" */
  int32_t links;
  int32_t pictures;
  const pagerex_limits* limits; /* of the writing; may be null. `memory` counts in pagerex_open alone */
  /* Functions of the host, called on the thread of the call; null ones are not. */
  void (*page_finished)(void* user, int page, const char* name); /* from 1; its file has ended */
  int (*may_go_on)(void* user); /* after each finished page and each progress: PAGEREX_GO_ON, PAGEREX_WAIT (is
                                   asked again 20 ms later) or PAGEREX_STOP (PAGEREX_RESULT_CANCELED) */
  void (*progress)(void* user,
                   double done); /* rises from 0 to 1, both included, in a hundred steps at most */
  void* user;
  /* Of the formats "html", "text" and "markdown"; the others take no notice. What is not 0 is wanted. */
  int32_t revisions;    /* PAGEREX_REVISIONS_... */
  int32_t hidden_text;  /* text that Word hides */
  int32_t no_comments;  /* leaves out comments, which otherwise stand behind the text, with their authors */
  int32_t headers;      /* headers and footers, each in front of its section; "text" alone */
  int32_t front_matter; /* the document's properties in front of it; "markdown" alone */
  int32_t page_breaks;  /* as comments; "markdown" alone */
  int32_t common_mark;  /* CommonMark without GitHub's additions; "markdown" alone */
  int32_t width; /* columns that lines are wrapped at, and tables fitted to: 20 or more; 0 for a line for each
                    paragraph and row; "text" alone */
  int32_t dark_scheme; /* a page that is dark where its reader's screen is; "html" alone */
} pagerex_options;

/* A format that documents can be written in. */
typedef struct pagerex_format {
  const char* name;       /* "normal" */
  const char* extension;  /* of the main file, with the dot: ".html" */
  const char* media_type; /* of the main file */
  const char* sentence;   /* what it is, in English */
  int is_single_file;     /* whether there is never another than the main file */
  int has_page_size;      /* 1: options.page_size counts, and 2000 stands for 0. 2: it counts, and 0 stands
                             for a single page; with a size that page comes in pieces, to be put together
                             as they are: "NAME.html", then "NAME.files/2.html" and so on */
  int is_single_without_pictures; /* whether there is none where pictures are embedded or left out */
} pagerex_format;

/* The formats from 0 on, in an order that stays; null behind the last. Constants. */
PAGEREX_API const pagerex_format* pagerex_format_at(int index);

/* --- Documents ----------------------------------------------------------------------------------------- */

/* An open document. Owns what was read of it; refers to its input. One thread at a time. */
typedef struct pagerex_document pagerex_document;

/* What is known of a document without writing it. */
typedef struct pagerex_document_info {
  size_t size;
  int32_t kind;
  uint64_t input_bytes;
  pagerex_counts counts;
  pagerex_summary summary;
} pagerex_document_info;

/* Opens a document. `limits` and `result` may be null. Returns PAGEREX_RESULT_... and sets `*document`, which
 * pagerex_close takes back, or to null for anything but PAGEREX_RESULT_OK. */
PAGEREX_API int pagerex_open(const pagerex_input* input, const pagerex_limits* limits,
                             pagerex_document** document, pagerex_result* result);

/* Fills in `info`, which has its size set. Reads tables of the document that may not have been read so far.
 * Returns PAGEREX_RESULT_OK, PAGEREX_RESULT_INVALID_ARGUMENT, _UNREADABLE, _DAMAGED, _OUT_OF_MEMORY or
 * _MEMORY_LIMIT. */
PAGEREX_API int pagerex_info(pagerex_document* document, pagerex_document_info* info);

/* Writes the document, as often as wanted. `options` and `result` may be null. No part of the document runs
 * in the pages: all that comes from it is escaped for its place, and its addresses are judged. The library's
 * own scripts stand in the formats "normal", "phone" and "mulpages". Returns PAGEREX_RESULT_...: anything but
 * PAGEREX_RESULT_OK leaves nothing at an output's path. */
PAGEREX_API int pagerex_write(pagerex_document* document, const pagerex_options* options,
                              const pagerex_output* output, pagerex_result* result);

/* Null is accepted. */
PAGEREX_API void pagerex_close(pagerex_document* document);

/* Opens, writes and closes. `options` and `result` may be null; `limits` counts for both. */
PAGEREX_API int pagerex_convert(const pagerex_input* input, const pagerex_limits* limits,
                                const pagerex_options* options, const pagerex_output* output,
                                pagerex_result* result);

/* --- Pictures ------------------------------------------------------------------------------------------ */

/* What browsers read of a kind of picture. */
typedef struct pagerex_picture_format {
  const char* extension;  /* with the dot: ".svg" */
  const char* media_type; /* "image/svg+xml" */
} pagerex_picture_format;

/* Of PAGEREX_KIND_EMF and those behind it: SVG of metafiles, PNG of bitmaps, and PNG, JPEG and GIF as they
 * are. Null for all other kinds. Constants. */
PAGEREX_API const pagerex_picture_format* pagerex_picture_format_of(int kind);

typedef struct pagerex_picture_options {
  size_t size;
  /* In points: the size at which it is shown, for a metafile that does not tell its own; 0 for not known. */
  double width;
  double height;
} pagerex_picture_options;

/* Writes a picture as browsers read it: one file, whose media type `begin` is told. `limits`, `options` and
 * `result` may be null; limits.memory counts the bytes of an input that is not in memory. An output without a
 * name is called "picture". SVG files refer to nothing outside themselves, and nothing in them runs. At a
 * path, files of SVG and PNG are replaced, and no others. Returns PAGEREX_RESULT_...: what can be read of a
 * damaged picture is written, with PAGEREX_WARNING_PICTURE; where that is nothing, it is
 * PAGEREX_RESULT_DAMAGED. */
PAGEREX_API int pagerex_convert_picture(const pagerex_input* input, const pagerex_limits* limits,
                                        const pagerex_picture_options* options, const pagerex_output* output,
                                        pagerex_result* result);

/* "0.1.0". */
PAGEREX_API const char* pagerex_version(void);

#ifdef __cplusplus
}
#endif

#endif
