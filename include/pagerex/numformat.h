#ifndef PAGEREX_NUMFORMAT_H
#define PAGEREX_NUMFORMAT_H

/* Numbers, dates and texts under spreadsheet-style format strings, "#,##0.00;[Red]-#,##0.00". Usable from C
 * and C++.
 *
 * Any number of threads may call any of these functions at once, on the same formats too. They share one
 * service, which a host that formats numbers starts by _XNFInit; a conversion (pagerex.h) has its own and
 * neither starts nor ends this one.
 *
 * The decimal point of a General number, and of _ftog and its kin, is that of the C locale that is set when
 * the call is made: that of LC_NUMERIC, or a blank if it is not a single wide character. Nothing else depends
 * on the locale. To set it while another thread formats is as safe as the C library makes it.
 *
 * Results: NF_OK, NF_NOTHING or one of the failures below. No exception leaves these functions. A text that
 * is handed out is a new array, which the caller frees with delete[] or _XNFFreeText; it is null if there is
 * no text. */

#include <stddef.h>
#include <stdint.h>
#ifndef __cplusplus
#include <stdbool.h>
#endif

#include "pagerex/pagerex.h"

#ifdef __cplusplus
extern "C" {
#endif

#define NF_OK 0u
#define NF_NOTHING 1u /* there was nothing to do */
#define NF_OUT_OF_MEMORY 0x80000002u
#define NF_BAD_ARGUMENT 0x80000003u /* also: a malformed format, a date out of range */
#define NF_FAILURE 0x80000008u      /* also: a value that the format cannot show */

/* A compiled format, counted by references. */
typedef struct KNumericalFormat KNumericalFormat;

/* Values of tagVARIANT::vt, and the member that each of them reads. Any other tag is a text that no section
 * shows. */
enum {
  NF_VT_EMPTY = 0,
  NF_VT_I2 = 2,       /* iVal */
  NF_VT_I4 = 3,       /* lVal */
  NF_VT_R4 = 4,       /* fltVal */
  NF_VT_R8 = 5,       /* dblVal */
  NF_VT_DATE = 7,     /* date: days since 30 December 1899 */
  NF_VT_BSTR = 8,     /* bstrVal: a wide text; null counts as empty */
  NF_VT_BOOL = 11,    /* boolVal */
  NF_VT_UI1 = 17,     /* bVal */
  NF_VT_UI2 = 18,     /* uiVal */
  NF_VT_UI4 = 19,     /* ulVal: a serial number, spelled by the numbering system that the format names */
  NF_VT_INT = 22,     /* intVal */
  NF_VT_UINT = 23,    /* uintVal */
  NF_VT_BYREF = 16384 /* pbstrVal: a reference to a wide text */
};

/* A value. The caller zeroes it, sets the tag and the member, and keeps what it points to. */
typedef struct tagVARIANT {
  uint16_t vt;
  uint16_t reserved[3];
  union {
    int16_t iVal;
    int32_t lVal;
    float fltVal;
    double dblVal;
    double date;
    const wchar_t* bstrVal;
    int16_t boolVal;
    uint8_t bVal;
    uint16_t uiVal;
    uint32_t ulVal;
    int32_t intVal;
    uint32_t uintVal;
    const wchar_t* const* pbstrVal;
  };
} tagVARIANT;

/* Bits of NF_FORMAT_PARAM::flags. */
enum {
  NF_EMPTY_AS_ZERO = 1, /* an empty value is formatted as a zero */
  NF_HAS_LANGUAGE = 8   /* `language` is set; otherwise it is English */
};

/* How to compile or format; a null pointer means -1, 0, -1. */
typedef struct NF_FORMAT_PARAM {
  int32_t width; /* characters that a General number may take; negative: any; 0: nothing is formatted */
  uint32_t flags;
  uint32_t language; /* 1041 Japanese, 2052 Chinese, 1066 Vietnamese, any other English */
} NF_FORMAT_PARAM;

/* Bits of NFSTYLE::flags. */
enum {
  NF_STYLE_DATE = 1, /* with NF_STYLE_TIME: both */
  NF_STYLE_TIME = 2,
  NF_STYLE_CHINESE_MONEY = 4,
  NF_STYLE_YEAR = 8,
  NF_STYLE_MONTH = 0x10,
  NF_STYLE_DAY = 0x20,
  NF_STYLE_HOUR = 0x40,
  NF_STYLE_MINUTE = 0x80,
  NF_STYLE_SECOND = 0x100,
  NF_STYLE_SCALE_COMMAS = 0x200
};

/* Bits of NFSTYLE::codePage. Its low half is 0xFFFE, its third byte the N of "[DBNumN]". */
#define NF_STYLE_TEXT 0x01000000u
#define NF_STYLE_THOUSANDS 0x04000000u
#define NF_STYLE_MORE_THAN_DIGITS 0x08000000u

/* Values of NFSTYLE::kind. */
enum {
  NF_KIND_GENERAL = 1,
  NF_KIND_NUMBER = 2,
  NF_KIND_EXPONENT = 3,
  NF_KIND_PERCENT = 4,
  NF_KIND_PER_MILLE = 5,
  NF_KIND_FRACTION = 6,
  NF_KIND_DATE = 7,
  NF_KIND_TEXT = 8,
  NF_KIND_PURE_GENERAL = 9 /* General and nothing else */
};

/* What the section of a format says beyond the text. */
typedef struct NFSTYLE {
  uint32_t color; /* 0xAARRGGBB; 0xFFFFFE: none */
  uint32_t flags;
  uint32_t fillChar; /* the character that fills the cell, of a "*x"; 0: none */
  uint32_t kind;     /* 0: there was no section */
  uint32_t codePage;
} NFSTYLE;

/* The sections of a format, in the order of its text. */
typedef struct NF_SECTS_INFO {
  uint32_t count; /* 1 to 4; what lies behind that many sections is not written */
  struct {
    uint32_t kind;
    uint16_t zero;
    uint16_t unused; /* not written */
  } sect[4];
} NF_SECTS_INFO;

/* Starts the service; a second call does nothing. Until then, and after _XNFUnInit, formats compile to empty
 * sections, which give no text. */
PAGEREX_API uint32_t _XNFInit(void);
PAGEREX_API uint32_t _XNFUnInit(void);

/* Compile `format`, of at most 255 characters, into `*out`, which the caller gives back with _XNFRelease. A
 * malformed format gives NF_BAD_ARGUMENT and a null `*out`.
 *
 * _XNFCompile reads the dialect OQ and keeps what it compiled: the same format string gives the same object
 * until _XNF_ClearNFTableCache, compiled with the language of the first call. A null format gives a null
 * `*out` and NF_OK. _XNFCompileForOQ is the same. The others read the dialect they name and keep nothing; to
 * them a null format is an empty one, which is General. */
PAGEREX_API uint32_t _XNFCompile(const wchar_t* format, KNumericalFormat** out, const NF_FORMAT_PARAM* param);
PAGEREX_API uint32_t _XNFCompileForOQ(const wchar_t* format, KNumericalFormat** out,
                                      const NF_FORMAT_PARAM* param);
PAGEREX_API uint32_t _XNFCompileForExcel(const wchar_t* format, KNumericalFormat** out,
                                         const NF_FORMAT_PARAM* param);
PAGEREX_API uint32_t _XNFCompileForWord(const wchar_t* format, KNumericalFormat** out,
                                        const NF_FORMAT_PARAM* param);
PAGEREX_API uint32_t _XNFCompileForQel(const wchar_t* format, KNumericalFormat** out,
                                       const NF_FORMAT_PARAM* param);

/* Write a compiled format back as text, in the dialect OQ, or in the one they name. */
PAGEREX_API uint32_t _XNFUnCompile(KNumericalFormat* format, wchar_t** out, const NF_FORMAT_PARAM* param);
PAGEREX_API uint32_t _XNFUnCompileForExcel(KNumericalFormat* format, wchar_t** out,
                                           const NF_FORMAT_PARAM* param);
PAGEREX_API uint32_t _XNFUnCompileForWord(KNumericalFormat* format, wchar_t** out,
                                          const NF_FORMAT_PARAM* param);

/* Format `value`. `out` and `style` may be null. _XNFFormat compiles by _XNFCompile. */
PAGEREX_API uint32_t _XNFFormat(const tagVARIANT* value, const wchar_t* format, wchar_t** out, NFSTYLE* style,
                                const NF_FORMAT_PARAM* param);
PAGEREX_API uint32_t _XNFFormatEx(const tagVARIANT* value, KNumericalFormat* format, wchar_t** out,
                                  NFSTYLE* style, const NF_FORMAT_PARAM* param);

/* Rounds `*value` to what the format would show of it. NF_NOTHING for the value 0, for a null `value`, and
 * for formats that do not round. */
PAGEREX_API uint32_t _XNFFormatPrecision(KNumericalFormat* format, double* value);

/* Count a reference; the last release destroys the format. A null format is skipped. */
PAGEREX_API uint32_t _XNFAddRef(KNumericalFormat* format);
PAGEREX_API uint32_t _XNFRelease(KNumericalFormat* format);

/* The kinds of the format's sections. */
PAGEREX_API uint32_t _XNF_GetSectsInfo(KNumericalFormat* format, NF_SECTS_INFO* info);
/* Whether the format has a single section and that is one for texts. */
PAGEREX_API uint32_t _XNF_OQ_IsSingleStringSect(KNumericalFormat* format, bool* single);

/* Forgets what _XNFCompile kept. Formats that somebody holds live on. */
PAGEREX_API uint32_t _XNF_ClearNFTableCache(void);

/* Write a number in the general, the fixed and the exponent form, with at most 15 significant digits and the
 * decimal point of the C locale, into `buffer` of `size` characters; what does not fit is cut.
 *
 * `precision`: decimals, or digits for the general form. `plus` writes "+" before a number that is not
 * negative, `trim` drops trailing zeros of the decimals. `exponentFlags`: 1 "E" instead of "e", 4 at least
 * two digits, 6 three, 8 no "+".
 * `*length` (may be null) becomes the length of the whole text; -1 for an infinity or a NaN. NF_FAILURE if it
 * is negative. */
PAGEREX_API uint32_t _ftog(double value, int precision, wchar_t* buffer, int size, bool plus, bool trim,
                           unsigned exponentFlags, int* length);
PAGEREX_API uint32_t _ftot(double value, int precision, wchar_t* buffer, int size, bool plus, bool trim,
                           unsigned exponentFlags, int* length);
PAGEREX_API uint32_t _ftoe(double value, int precision, wchar_t* buffer, int size, bool plus, bool trim,
                           unsigned exponentFlags, int* length);

/* Frees a text that one of these functions has handed out. */
PAGEREX_API uint32_t _XNFFreeText(wchar_t* text);

#ifdef __cplusplus
}
#endif

#endif
