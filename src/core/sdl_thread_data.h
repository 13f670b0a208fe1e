#pragma once

namespace barcode {

// SDL keeps data for each thread that uses it (its error text) and frees them only for threads that it
// started. Called on a thread, this frees them when the thread ends.
void FreeSdlDataAtThreadExit();

}  // namespace barcode
