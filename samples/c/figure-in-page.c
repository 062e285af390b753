/*
 * figure-in-page FIGURE.ps OUTPUT.pdf
 *
 * Puts one PostScript figure into a page of a new PDF file, in its middle and at half its size. The
 * figure becomes a form of its own, so that it is placed by one matrix, and its patterns with it.
 * Exit status 0: written; 1: not, and standard error says why.
 *
 *     cc figure-in-page.c -o figure-in-page $(pkg-config --cflags --libs tqpumpd2k libqpdf)
 */
#include <qpdf/qpdf-c.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <tqpumpd2k.h>

/* A stream with the entries of a dictionary, given as PDF text. */
static qpdf_oh newStream(qpdf_data pdf, const char* entries, const void* data, size_t length) {
  char text[1024];
  snprintf(text, sizeof text, "<< %s >>", entries);
  const qpdf_oh stream = qpdf_oh_new_stream(pdf);
  const qpdf_oh parsed = qpdf_oh_parse(pdf, text);
  const qpdf_oh dictionary = qpdf_oh_get_dict(pdf, stream);
  qpdf_oh_begin_dict_key_iter(pdf, parsed);
  while (qpdf_oh_dict_more_keys(pdf)) {
    const char* key = qpdf_oh_dict_next_key(pdf);
    qpdf_oh_replace_key(pdf, dictionary, key, qpdf_oh_get_key(pdf, parsed, key));
  }
  /* The filters of data that are encoded already are among the entries. */
  const qpdf_oh filters = qpdf_oh_get_key(pdf, dictionary, "/Filter");
  qpdf_oh_replace_stream_data(pdf, stream, data, length, filters, qpdf_oh_new_null(pdf));
  return stream;
}

/* Every record goes under its name: images to /XObject, patterns to /Pattern. A pattern may name
   older records, so it shares the resources. */
static qpdf_oh resourcesOf(qpdf_data pdf, void* converter) {
  const qpdf_oh resources =
      qpdf_make_indirect_object(pdf, qpdf_oh_parse(pdf, "<< /XObject <<>> /Pattern <<>> >>"));
  uint64_t count = 0;
  PdfObject* const* records = PSGetPdfObjects(converter, &count);
  for (uint64_t i = 0; i < count; ++i) {
    const PdfObject* record = records[i];
    const char* category = record->kind == TQP_IMAGE ? "/XObject" : "/Pattern";
    const qpdf_oh stream =
        newStream(pdf, record->dictionary, record->data, (size_t)record->dataLength);
    if (record->kind == TQP_PATTERN) {
      qpdf_oh_replace_key(pdf, qpdf_oh_get_dict(pdf, stream), "/Resources", resources);
    }
    qpdf_oh_replace_key(pdf, qpdf_oh_get_key(pdf, resources, category), record->name, stream);
  }
  return resources;
}

static int writePage(qpdf_data pdf, void* converter, const char* text, size_t length,
                     const char* path) {
  static const char place[] = "q 0.5 0 0 0.5 153 198 cm /Figure Do Q\n";
  const qpdf_oh figure =
      newStream(pdf, "/Type /XObject /Subtype /Form /BBox [0 0 612 792]", text, length);
  qpdf_oh_replace_key(pdf, qpdf_oh_get_dict(pdf, figure), "/Resources",
                      resourcesOf(pdf, converter));
  const qpdf_oh page =
      qpdf_make_indirect_object(pdf, qpdf_oh_parse(pdf,
                                                   "<< /Type /Page /MediaBox [0 0 612 792] "
                                                   "/Resources << /XObject <<>> >> >>"));
  const qpdf_oh own = qpdf_oh_get_key(pdf, qpdf_oh_get_key(pdf, page, "/Resources"), "/XObject");
  qpdf_oh_replace_key(pdf, own, "/Figure", figure);
  qpdf_oh_replace_key(pdf, page, "/Contents", newStream(pdf, "", place, strlen(place)));
  qpdf_add_page(pdf, pdf, page, QPDF_TRUE);
  if ((qpdf_init_write(pdf, path) | qpdf_write(pdf)) & QPDF_ERRORS) {
    fprintf(stderr, "%s", qpdf_get_error_full_text(pdf, qpdf_get_error(pdf)));
    return EXIT_FAILURE;
  }
  return EXIT_SUCCESS;
}

/* The file's bytes with a line feed after them, which ends the last word. */
static char* readFile(const char* path, int32_t* length) {
  FILE* file = fopen(path, "rb");
  char* bytes = NULL;
  if (file != NULL && fseek(file, 0, SEEK_END) == 0) {
    const long size = ftell(file);
    bytes = malloc((size_t)size + 1);
    rewind(file);
    *length = (int32_t)fread(bytes, 1, (size_t)size, file);
    bytes[(*length)++] = '\n';
  }
  if (file != NULL) {
    fclose(file);
  }
  return bytes;
}

int main(int argc, char** argv) {
  const float identity[] = {1, 0, 0, 1, 0, 0};
  int32_t length = 0;
  char* postScript = argc == 3 ? readFile(argv[1], &length) : NULL;
  if (postScript == NULL) {
    fprintf(stderr, "usage: figure-in-page FIGURE.ps OUTPUT.pdf, FIGURE.ps being a file to read\n");
    return EXIT_FAILURE;
  }
  void* converter = PSOpen(identity);
  const char* text = PSConvertToPdf(converter, postScript, &length);
  int status = EXIT_FAILURE;
  if (text == NULL) {
    fprintf(stderr, "%s: %s", argv[1], PSGetErrorStr(converter));
  } else {
    qpdf_data pdf = qpdf_init();
    qpdf_empty_pdf(pdf);
    status = writePage(pdf, converter, text, (size_t)length, argv[2]);
    qpdf_cleanup(&pdf);
  }
  PSClose(converter);
  free(postScript);
  return status;
}
