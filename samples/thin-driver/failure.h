/* How the programs of this folder tell what went wrong. */
#ifndef FAILURE_H
#define FAILURE_H

#include <stdbool.h>
#include <wchar.h>

/* Has standard output and standard error take all characters, as UTF-8. */
void speakUnicode(void);

/* Says on standard error what could not be done with what, and what the user may do. Gives false.
 */
bool fail(const wchar_t* action, const wchar_t* object, const wchar_t* advice);

/* The same with the system's reason, which is that of GetLastError. */
bool failWithReason(const wchar_t* action, const wchar_t* object, const wchar_t* advice);

#endif
