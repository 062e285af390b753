#pragma once

namespace postscript {

// Empties the process's list of PDF objects; the next object gets the number 1 again. What a
// converter has been handed out stays valid until it is handed out the objects anew. For programs
// that link the converter: nothing else empties the list but print jobs and the process's end.
// Works at any time and from any thread.
void clearPdfObjects() noexcept;

}  // namespace postscript
