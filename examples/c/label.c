/* Makes one label and writes it to a file.
 *
 *     label TYPE TEXT FILE        label jan13 490123456789 label.svg
 *
 * TYPE is a name that barcode_label_types lists; FILE ends in .png, .svg or .pdf. Exit status: 0 written, 1
 * refused or not written, 2 wrong usage. */
#include <barcode_label.h>
#include <errno.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

/* Appends `text` as a JSON string at `end`, which has room for six times its length and two quotes. Returns
 * the new end. */
static char* AppendString(char* end, const char* text) {
  static const char kHex[] = "0123456789abcdef";
  *end++ = '"';
  for (; *text != '\0'; ++text) {
    const unsigned char byte = (unsigned char)*text;
    if (byte == '"' || byte == '\\') {
      *end++ = '\\';
      *end++ = *text;
    } else if (byte < 0x20) {
      memcpy(end, "\\u00", 4);
      end[4] = kHex[byte >> 4];
      end[5] = kHex[byte & 0xF];
      end += 6;
    } else {
      *end++ = *text;
    }
  }
  *end++ = '"';
  return end;
}

/* The request, to be freed; NULL when memory is exhausted. */
static char* Request(const char* type, const char* text, const char* format) {
  const size_t room = 64 + 6 * (strlen(type) + strlen(text) + strlen(format));
  char* const request = malloc(room);
  if (request == NULL) {
    return NULL;
  }
  char* end = request;
  const char* const members[][2] = {{"{\"type\":", type}, {",\"text\":", text}, {",\"format\":", format}};
  for (size_t i = 0; i < sizeof members / sizeof members[0]; ++i) {
    const size_t length = strlen(members[i][0]);
    memcpy(end, members[i][0], length);
    end = AppendString(end + length, members[i][1]);
  }
  memcpy(end, "}", 2);
  return request;
}

/* Prints the string behind `"name":` in a report's error. A quote within a string is written \", so that the
 * name is found nowhere else; any other escape is printed as it stands. */
static void PrintMember(const char* report, const char* name) {
  char key[32];
  snprintf(key, sizeof key, "\"%s\":\"", name);
  const char* at = strstr(report, "\"error\":");
  at = at == NULL ? NULL : strstr(at, key);
  if (at == NULL) {
    return;
  }
  for (at += strlen(key); *at != '"' && *at != '\0'; ++at) {
    if (*at == '\\' && (at[1] == '"' || at[1] == '\\')) {
      ++at;
    }
    fputc(*at, stderr);
  }
}

/* "label: bad_text text: A sentence that says what to do." */
static void PrintError(const char* report) {
  fputs("label: ", stderr);
  PrintMember(report, "code");
  fputc(' ', stderr);
  PrintMember(report, "field");
  fputs(": ", stderr);
  PrintMember(report, "message");
  fputc('\n', stderr);
}

/* 0 when all of it is written. */
static int Write(const unsigned char* data, size_t length, const char* path) {
  FILE* const file = fopen(path, "wb");
  int isWritten = file != NULL && fwrite(data, 1, length, file) == length;
  if (file != NULL && fclose(file) != 0) {
    isWritten = 0;
  }
  if (!isWritten) {
    fprintf(stderr, "label: cannot write %s: %s\n", path, strerror(errno));
  }
  return isWritten ? 0 : 1;
}

int main(int argc, char** argv) {
  if (argc != 4) {
    fputs("Usage: label TYPE TEXT FILE\n", stderr);
    return 2;
  }
  const char* const suffix = strrchr(argv[3], '.');
  char* const request = Request(argv[1], argv[2], suffix == NULL ? "png" : suffix + 1);
  BarcodeLabel* const label = request == NULL ? NULL : barcode_label_make(request, strlen(request));
  free(request);
  if (label == NULL) {
    fputs("label: memory is exhausted\n", stderr);
    return 1;
  }
  int status = 1;
  if (barcode_label_ok(label)) {
    size_t length = 0;
    const unsigned char* const data = barcode_label_data(label, &length);
    status = Write(data, length, argv[3]);
  } else {
    PrintError(barcode_label_report(label));
  }
  barcode_label_free(label);
  return status;
}
