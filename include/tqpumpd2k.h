/*
 * tqpumpd2k: the engine of a print-to-PDF product. This header is C11 and C++20.
 *
 * The converter takes the PostScript of a page and gives the text of a PDF content stream
 * (ISO 32000-1, 7.8.2), which the caller places in the page that it builds. It is no full
 * interpreter of the PostScript Language Reference: each painting operator becomes PDF text at
 * once, and the rest of the language stands only as far as page descriptions need it.
 *
 * The order of calls: PSOpen; for each page PSStartPage (which the first page can do without), then
 * PSConvertToPdf as often as the page has pieces; PSGetPdfObjects and PSGetErrorStr at any time;
 * PSClose.
 *
 * Threads: a converter is used by one thread at a time. The list of PDF objects belongs to the
 * process and is not protected, so that two converters must not run at the same time either.
 * No call throws. No call but PSClose accepts a null handle.
 */
#ifndef TQPUMPD2K_H
#define TQPUMPD2K_H

#include <stddef.h>
#include <stdint.h>

#if defined(_WIN32)
#define TQP_EXPORT
#else
#define TQP_EXPORT __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* The kinds of PdfObject. */
enum { TQP_PATTERN = 1, TQP_IMAGE = 3 };

/*
 * One object that the text refers to by name and that the caller must put into the PDF file: an
 * image too large to stay in the text (ISO 32000-1, 8.9.5), or a tiling pattern (8.7.3).
 * Every pointer is the library's and lives as long as the record, which lives until the library
 * empties its list or is unloaded; the caller neither changes nor frees nor copies a record.
 * The record has private fields behind `source`: only pointers to it are ever handed out.
 */
struct PdfObject {
  char* dictionary;    /* NUL-terminated entries of the dictionary, without << and >> */
  void* extra;         /* not used, null */
  uint32_t reserved;   /* not used, 0 */
  int32_t compress;    /* 1: `data` is plain and may be compressed; 0: `dictionary` names filters
                          that `data` is already encoded with */
  unsigned char* data; /* the stream's bytes */
  uint64_t dataLength; /* how many bytes `data` has */
  char* name;    /* NUL-terminated resource name with its solidus, such as "/PSI1" or "/PA2" */
  uint32_t kind; /* TQP_PATTERN or TQP_IMAGE */
  void* source;  /* private: what the record stands for in the program, may be null */
};
typedef struct PdfObject PdfObject;

/*
 * Opens a converter.
 *   matrix: six 32-bit floats a b c d e f, the page's default coordinate system in PostScript
 *           order (a point x y goes to ax+cy+e, bx+dy+f). Read during the call only. It is what the
 *           program sees as its default matrix; it is never written to the text.
 * Gives the handle, to be closed with PSClose, or null when there is no memory for it.
 */
TQP_EXPORT void* PSOpen(const float* matrix);

/*
 * Starts a page: the graphics state is fresh again, with the given matrix (as for PSOpen). What
 * the program defined stays, as do the stacks and the list of objects.
 *   converter: a handle of PSOpen.
 *   matrix: six 32-bit floats, read during the call only.
 */
TQP_EXPORT void PSStartPage(void* converter, const float* matrix);

/*
 * Converts one piece of a page.
 *   converter: a handle of PSOpen.
 *   bytes: the PostScript, the caller's, read during the call only. Pieces may be cut anywhere.
 *   length: in: how many bytes, or a negative number when they are NUL-terminated.
 *           out: how many bytes the text has; untouched on failure.
 * Gives the text that this piece wrote, which may hold NUL bytes and is NUL-terminated behind its
 * length. It is the converter's, valid until the next PSConvertToPdf or PSClose with this handle.
 * Gives null on failure; PSGetErrorStr says why. The converter goes on from where it failed; the
 * rest of the piece is lost, and what it had written.
 */
TQP_EXPORT const char* PSConvertToPdf(void* converter, const char* bytes, int32_t* length);

/*
 * Gives all objects that were made in this process since the list was last empty, oldest first.
 *   converter: a handle of PSOpen.
 *   count: out: how many 64-bit pointers the array has.
 * The array is the library's, valid until the next call of this function with any handle, or until
 * the library empties its list.
 * Gives null, and a count of 0, when there is no memory for the array.
 */
TQP_EXPORT PdfObject* const* PSGetPdfObjects(void* converter, uint64_t* count);

/*
 * Gives the NUL-terminated text of the converter's last failure, "Exception:" and then
 * "[file:line] message" and a line feed, or an empty text. A later success does not clear it.
 * The text is the converter's, valid until its next PSConvertToPdf or PSClose.
 */
TQP_EXPORT const char* PSGetErrorStr(void* converter);

/*
 * Closes a converter. Objects that it made stay in the list. A null handle is no failure.
 */
TQP_EXPORT void PSClose(void* converter);

#ifdef __cplusplus
} /* extern "C" */
#endif

#if UINTPTR_MAX == UINT64_MAX
#ifdef __cplusplus
#define TQP_LAYOUT(condition) static_assert(condition, "the layout of PdfObject is fixed")
#else
#define TQP_LAYOUT(condition) _Static_assert(condition, "the layout of PdfObject is fixed")
#endif
TQP_LAYOUT(offsetof(PdfObject, dictionary) == 0);
TQP_LAYOUT(offsetof(PdfObject, extra) == 8);
TQP_LAYOUT(offsetof(PdfObject, reserved) == 16);
TQP_LAYOUT(offsetof(PdfObject, compress) == 20);
TQP_LAYOUT(offsetof(PdfObject, data) == 24);
TQP_LAYOUT(offsetof(PdfObject, dataLength) == 32);
TQP_LAYOUT(offsetof(PdfObject, name) == 40);
TQP_LAYOUT(offsetof(PdfObject, kind) == 48);
TQP_LAYOUT(offsetof(PdfObject, source) == 56);
TQP_LAYOUT(sizeof(PdfObject) == 64);
#undef TQP_LAYOUT
#endif

#endif
