// What a label costs a host in C: the request is there, the picture and the report are looked at where they
// lie.
#include <barcode_label.h>
#include <stddef.h>
#include <string.h>
#include <time.h>

// Seconds of this thread's processor time for so many labels of a request; -1 where one is refused.
double label_loop_seconds(const char* request, int count) {
  const size_t requestLength = strlen(request);
  struct timespec begin;
  struct timespec end;
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &begin);
  for (int i = 0; i < count; ++i) {
    BarcodeLabel* label = barcode_label_make(request, requestLength);
    size_t length = 0;
    const unsigned char* data = barcode_label_data(label, &length);
    const char* report = barcode_label_report(label);
    const int isWhole = data != NULL && length > 0 && report[0] == '{';
    barcode_label_free(label);
    if (!isWhole) {
      return -1;
    }
  }
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &end);
  return (double)(end.tv_sec - begin.tv_sec) + (double)(end.tv_nsec - begin.tv_nsec) * 1e-9;
}
