#pragma once

namespace barcode {

// SDL keeps data for each thread that uses it (its error text) and frees them only for threads that it
// started. Called on a thread, this makes them exist, so that a later failure finds room for its words, and
// has them freed when the thread ends. Throws std::bad_alloc when there is no memory for that; it may be
// called again.
void PrepareSdlThreadData();

}  // namespace barcode
