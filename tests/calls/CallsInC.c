/* The calls from C: a page in two pieces, a failure, and the list of objects. */
#include <string.h>

#include "include/tqpumpd2k.h"

#define CHECK(condition)               \
  do {                                 \
    if (!(condition)) return __LINE__; \
  } while (0)

int callsInC(void);

/* 0, or the line of the check that failed. */
int callsInC(void) {
  const float matrix[6] = {1, 0, 0, 1, 0, 0};
  void* converter = PSOpen(matrix);
  CHECK(converter != NULL);
  PSStartPage(converter, matrix);

  int32_t length = -1;
  const char* text = PSConvertToPdf(converter, "10 20 moveto 30 ", &length);
  CHECK(text != NULL && length == 0 && text[0] == '\0');
  length = 10;
  text = PSConvertToPdf(converter, "40 lineto nosuch", &length);
  CHECK(text != NULL && length == 16 && strcmp(text, "10 20 m\n30 40 l\n") == 0);

  length = -1;
  CHECK(PSConvertToPdf(converter, " nosuch ", &length) == NULL && length == -1);
  CHECK(strcmp(PSGetErrorStr(converter),
               "Exception:[ameObject:25] NOTHING TO EXECUTE for nosuch\n") == 0);

  uint64_t count = UINT64_MAX;
  struct PdfObject* const* objects = PSGetPdfObjects(converter, &count);
  CHECK(objects != NULL && count < UINT64_MAX);
  for (uint64_t i = 0; i < count; ++i) {
    CHECK(objects[i]->kind == TQP_IMAGE || objects[i]->kind == TQP_PATTERN);
  }
  PSClose(converter);
  PSClose(NULL);
  return 0;
}
