#ifndef PAGEREX_PAGEREX_H
#define PAGEREX_PAGEREX_H

/* Word 97-2003 documents (.doc) to HTML. Usable from C and C++.
 *
 * A conversion runs on the caller's thread from start to end. Any number of them may run at once, on threads
 * of their own, each with an output of its own; one may also be begun in a function that another one calls.
 * Each call sets the process locale at its start, unless it is set already, and needs none itself; a host
 * that uses the locale on other threads sets zh_CN.UTF-8, or C.UTF-8 where that is missing, before it starts
 * them. The functions of the script "shapejs.js" are written once in a process, by the conversion that first
 * needs them. No exception leaves these functions. A conversion raises one signal only, SIGXFSZ, and only
 * where the host has set RLIMIT_FSIZE: ignore it there, since it ends the process. */

#if defined(__GNUC__)
#define PAGEREX_API __attribute__((visibility("default")))
#else
#define PAGEREX_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Results of PageRex. */
enum {
  PAGEREX_OK = 0,
  PAGEREX_FAILED = 2,      /* the document was opened, but not written to its end */
  PAGEREX_CANNOT_OPEN = 3, /* not a Word 97-2003 document (pagerex_detect of convert.h tells what it is),
                              encrypted, absent, or not writable */
  PAGEREX_CANNOT_WRITE = 4 /* invalid view, or the main HTML file or the files folder could not be created */
};

/* Result of pageRex for every failure. */
enum { PAGEREX_ERROR = -1 };

/* Answers of IPageRexCallBack::Continue. Any other value is a stop: no further page of the current section is
 * written. A stop behind the last page is a failure, without a list of pages; one in mid-document goes on
 * with the next section, and after the last section succeeds, with the list of the pages so far. */
enum { PAGEREX_WAIT = 0, PAGEREX_GO_ON = 1, PAGEREX_STOP = -1 };

/* Functions of the host, called on the conversion's thread. A null pointer is not called; a null Continue
 * counts as PAGEREX_GO_ON. The host owns the structure, which must stay valid for the length of the call. A
 * function that throws ends the conversion, which fails; PageRexOutputError is ECANCELED then. */
typedef struct IPageRexCallBack {
  /* After a page's HTML has been written: its number, from 1, and its path, valid during the call. The file
   * need not be complete on disk before Continue has answered. */
  void (*FinishPage)(int page, const char* path);
  /* Once, when the document has been written, successfully or not, before the list of pages is written. */
  void (*EndTransform)(void);
  /* Asked every 20 milliseconds after FinishPage, until it answers something other than PAGEREX_WAIT. */
  int (*Continue)(void);
} IPageRexCallBack;

/* Converts the document at `source`.
 *
 * `htmlPath`: the main HTML file, which is created or truncated. Everything else goes into the folder beside
 * it that takes its name with the suffix ".files"; what stood in that folder before is removed (except in
 * view preview, which has no folder).
 *
 * `argv` holds `argc` options, each a name, "=" and a value, read in their order:
 *   view=normal     one page with a navigation frame (the default)
 *   view=phone      many small pages
 *   view=preview    the first characters as a bare fragment, in the main HTML file
 *   view=mulpages   numbered pages and a list of them
 *   pagesize=N      characters per page (preview: in all)
 *   safe=on|off     nothing of the document runs in the pages (off by default)
 *   links=WHICH     addresses of the document that safe pages keep: safe (the default; those of a harmless
 *                   scheme, or of none), all or none; counts only with safe=on
 *
 * Pages made without safe=on are untrusted: a document can bring script of its own into them. They belong
 * into a sandboxed frame, or under a policy that allows no script. Safe pages have the library's scripts
 * only.
 *
 * A page size counts only behind a view other than normal, and has no default: pass one with these views.
 * Options that cannot be read are skipped. The source must be writable, though nothing is written to it.
 *
 * Writing goes on when the file system fails, so that PAGEREX_OK does not say that the files are complete:
 * ask PageRexOutputError. Only regular files are read. A document that its own output would destroy, being
 * the main HTML file by whatever name or lying in the files folder, is not converted (PAGEREX_CANNOT_WRITE).
 *
 * Returns PAGEREX_OK, PAGEREX_FAILED, PAGEREX_CANNOT_OPEN or PAGEREX_CANNOT_WRITE. */
PAGEREX_API int PageRex(const char* source, const char* htmlPath, int argc, char** argv);

/* Converts in view mulpages, to pages that are not safe, with `pageSize` characters per page, calling
 * `callback` (may be null) for each finished page. Returns PAGEREX_OK or PAGEREX_ERROR. */
PAGEREX_API int pageRex(const char* source, const char* htmlPath, int pageSize, IPageRexCallBack* callback);

/* Why the output of this thread's last conversion is not complete: a value of errno (ENOSPC, EFBIG, ...) of
 * the first file or folder that could not be made, or not be written to its end, which then remains as it is.
 * ENAMETOOLONG also for a path in the files folder of more than 259 bytes; EEXIST where the output would
 * destroy the document; ECANCELED where a function of the host threw. 0 when all that was to be written has
 * arrived, or before the first conversion. */
PAGEREX_API int PageRexOutputError(void);

#ifdef __cplusplus
}
#endif

#endif
