/*
 * tqpumpd2k: the engine of a print-to-PDF product, in two halves: the converter and, on Windows,
 * the printer front end, whose calls are at the end of this header. This header is C11 and C++20.
 *
 * The converter takes the PostScript of a page and returns the text of a PDF content stream
 * (ISO 32000-1, 7.8.2), which the caller places in the page that it builds. It is no full
 * interpreter of the PostScript Language Reference: each painting operator becomes PDF text at
 * once, and the rest of the language is there only as far as page descriptions need it.
 *
 * To build a program that uses it:
 *   Debian         cc page.c -o page $(pkg-config --cflags --libs tqpumpd2k)
 *   CMake          find_package(tqpumpd2k 1 REQUIRED)
 *                  target_link_libraries(page PRIVATE tqpumpd2k::tqpumpd2k)
 *   MinGW          x86_64-w64-mingw32-gcc -Iinclude page.c lib/tqpumpd2k.dll.a -o page.exe
 *   Visual C++     cl /Iinclude page.c lib\tqpumpd2k.lib
 *
 * The order of calls: PSOpen; for each page PSStartPage (which the first page can do without), then
 * PSConvertToPdf as often as the page has pieces; PSGetPdfObjects and PSGetErrorStr at any time;
 * PSClose.
 *
 * A page ends with white space. Pieces may be cut anywhere, so the last word of a piece waits until
 * white space or a delimiter says that it is whole: "0 0 moveto 9 9 lineto stroke" strokes nothing
 * before a line feed follows.
 *
 * A page that ended unfinished (a string or procedure that is not closed, an image without the rest
 * of its data) takes what comes next for its own. To see whether it did, run one more piece that
 * writes something known, "10 systemdict /setmiterlimit get exec\n", and look for "10 M ". Where
 * the call fails, the open thing took the beginning only, or something else is wrong: run the piece
 * again. The page was unfinished if it is well then; close the converter, as its state is of no
 * use.
 *
 * What the caller does with the text and the objects:
 *   - The text is in the coordinates that the program took for its default ones. A page matrix that
 *     is not the identity goes in front of it, as "a b c d e f cm\n". It may restore more graphics
 *     states than it saves or fewer: put a "q " in front for each Q too many, and " Q" at the end
 *     for each q too many. A form XObject of its own is the way to place a figure.
 *   - Each object becomes an indirect stream under its name in the page's resources, an image in
 *     /XObject and a pattern in /Pattern. Only the names that the text uses are needed.
 *   - The stream's dictionary has the record's entries and /Length. With `compress` 1 the data may
 *     be compressed, and /Filter then says so.
 *   - A pattern may use patterns that are older: its /Resources, empty in the record, then name
 *     them. The /Matrix of a pattern leads to the coordinates of the page or form whose content
 *     uses it, and is to be multiplied by a page matrix that the caller wrote there.
 *
 * Threads: any number of threads may each have converters, and jobs, at the same time; one
 * converter is used by one thread at a time. The list of PDF objects belongs to the process and is
 * guarded. Two threads that make equal images at the same time may get one object or two.
 *
 * No call throws. No call but PSClose accepts a null handle.
 */
#ifndef TQPUMPD2K_H
#define TQPUMPD2K_H

#include <stddef.h>
#include <stdint.h>
#include <wchar.h>

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
 * Every pointer is the library's and lives as long as the record. A record never changes, and lives
 * until the library empties its list or is unloaded, and as long as it is handed out (see
 * PSGetPdfObjects); the caller neither changes nor frees nor copies it.
 * The record has private fields after `source`: only pointers to it are ever handed out.
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
 * Returns the handle, to be closed with PSClose, or null when there is no memory for it.
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
 * Returns the text that this piece wrote, which may hold NUL bytes and is NUL-terminated after its
 * length. It is the converter's, valid until the next PSConvertToPdf or PSClose with this handle.
 * Returns null on failure; PSGetErrorStr says why. The converter goes on from where it failed; the
 * rest of the piece is lost, and what it had written.
 */
TQP_EXPORT const char* PSConvertToPdf(void* converter, const char* bytes, int32_t* length);

/*
 * Returns all objects that were made in this process since the list was last empty, oldest first.
 * Nothing of the converter's empties it. A print job does, at its start (DocStart, DocStart2K) and
 * at its end (DocEnd): text from before then refers to objects that the list no longer has.
 *   converter: a handle of PSOpen.
 *   count: out: how many 64-bit pointers the array has.
 * The array and its records are the library's, valid until the next call of this function with the
 * same handle, or PSClose, whatever other threads do. A call costs no more than what is new.
 * Returns null, and a count of 0, when there is no memory for the array.
 */
TQP_EXPORT PdfObject* const* PSGetPdfObjects(void* converter, uint64_t* count);

/*
 * Returns the NUL-terminated text of the converter's last failure, "Exception:" and then
 * "[file:line] message" and a line feed, or an empty text. A later success does not clear it.
 * The text is the converter's, valid until its next PSConvertToPdf or PSClose.
 */
TQP_EXPORT const char* PSGetErrorStr(void* converter);

/*
 * Closes a converter. Objects that it made stay in the list. A null handle is no failure.
 */
TQP_EXPORT void PSClose(void* converter);

#if defined(_WIN32)

/*
 * The printer front end serves a printer driver in the process that prints. It copies a job's bytes
 * unread into a file, whose name follows from the printer's settings and the document's name, and
 * tells the user's launcher, tqpmsnd.exe, of the job's start and of its file.
 *
 * The order of calls: DocStart2K or DocStart; DocWrite as often as the job has buffers; DocEnd. In
 * between, a job's settings may be read.
 *
 * A job's handle has 32 bits. Widened with zeros it is the pointer `job` that the settings are read
 * by: (const void*)(uintptr_t)handle. A handle that is no job's, or no longer one's, is no fault:
 * the call shows a message box and returns the result of failure.
 *
 * Text is NUL-terminated, wide text UTF-16. What the caller passes stays the caller's and is not
 * kept beyond the call.
 *
 * Threads: jobs of several threads and processes may run at a time; starts, writes and ends take
 * turns, over the whole machine. One job is used by one thread at a time. A write or an end may
 * take as long as the launcher does to answer. No call throws. Failures that the user should know
 * of are shown in message boxes.
 *
 * Jobs should be ended before the library is unloaded: one that was not is given up as it is. A
 * process should load the library once: with each unloading the runtime in it loses some 75 KB and
 * a few handles, and up to some MB for each thread that has converted and still runs.
 */

/*
 * Starts a job of a driver that has the spooler's handle.
 *   printer: the spooler's handle (HANDLE) of the printer that prints the job. The caller's, who
 *            keeps it open until DocEnd.
 *   jobId: 32 bits, the spooler's number of the job.
 *   printerName: for a developer's trace alone, may be null.
 *   docName: the document's name, may be null.
 * Returns the job's handle; 0 if the printer cannot be asked for its name, after a message box, or
 * if there is no memory.
 */
uint32_t DocStart2K(void* printer, uint32_t jobId, const wchar_t* printerName,
                    const wchar_t* docName);

/*
 * Writes a buffer of the job's bytes to its file or, when the printer's setting "passthru" is not
 * 0, on to the printer. The first write finds or starts the launcher and creates the file.
 *   job: a handle of DocStart2K or DocStart.
 *   buffer: the bytes. Null is a failure.
 *   length: 32 bits, how many bytes. 0 is a failure, but not on the way to the printer.
 * Returns 1; 0 on failure, and from then on at once for every write of the job.
 */
uint32_t DocWrite(uint32_t job, const void* buffer, uint32_t length);

/*
 * Ends a job, also one that failed: closes its file, takes the job out of the spooler's queue,
 * tells the launcher, and frees the job. The handle must not be used again.
 *   job: a handle of DocStart2K or DocStart.
 * Returns 1; 0 if the handle is no running job's, or there is no memory to end it.
 */
uint32_t DocEnd(uint32_t job);

/*
 * Returns a setting as a number of 32 bits.
 *   job: a job's handle, widened.
 *   key: the setting's name, in any case. Null names no setting.
 *   defaultValue: 32 bits, given if there is no such setting, and for a job that is none.
 */
uint32_t getIntVal(const void* job, const wchar_t* key, uint32_t defaultValue);

/*
 * Copies a setting's text. The name "pdfaXML" means the document's XMP packet (ISO 16684-1),
 * which is copied as an empty text if it does not fit.
 *   job: a job's handle, widened.
 *   key: the setting's name, in any case but for "pdfaXML". Null names no setting.
 *   buffer: where the text goes, with its terminator. Null takes nothing.
 *   size: 32 bits, the buffer's size in characters.
 *   defaultText: what is copied when there is no such setting, or it is empty or does not fit. It
 *                is not measured: the buffer must have room for it. Null leaves the buffer as it
 *                is.
 * Returns 1, or 0 for a job that is none.
 */
uint32_t getStringVal(const void* job, const wchar_t* key, wchar_t* buffer, uint32_t size,
                      const wchar_t* defaultText);

/*
 * Copies the document's XMP packet as UTF-8.
 *   job: a job's handle, widened.
 *   key: "pdfaXML". For any other, and for null, nothing is copied.
 *   buffer: where the packet goes, with its terminator. Null takes nothing.
 *   size: 32 bits, the buffer's size in bytes. If it is too small, what fits is copied, without a
 *         terminator.
 * Returns 1, or 0 for a job that is none.
 */
uint32_t getStringMultibyte(const void* job, const char* key, char* buffer, uint32_t size);

#endif

#ifdef __cplusplus
} /* extern "C" */
#endif

#if defined(_WIN32)

/* The name that DocStart is exported under, for GetProcAddress. */
#define TQP_DOC_START "?DocStart@@YAKPEA_W@Z"

/* The type of DocStart, for those who look it up. */
typedef unsigned long (*DocStartCall)(wchar_t* printerName);

#ifdef __cplusplus

/*
 * Starts a job by the printer's name. The library exports it under the name that it has in
 * Microsoft's C++; other compilers' programs look it up by TQP_DOC_START. printerName: the
 * printer's name as the spooler knows it. Null is a failure. Returns the job's handle, as
 * DocStart2K does, which is 0 also if the printer cannot be opened.
 */
unsigned long DocStart(wchar_t* printerName);

/* Empty. It is here for programs that were linked to its assignment. */
class CUmpd {
 public:
  CUmpd& operator=(const CUmpd&);
};

#endif
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
