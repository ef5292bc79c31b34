/* A host in C99: converts a document from memory into memory.
 *
 *     memory FORMAT < SOURCE     prints the name, the media type and the size of each file that comes out */
#include <pagerex/convert.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

typedef struct Buffer {
  char* bytes;
  size_t size;
} Buffer;

static int append(void* user, void* file, const void* data, size_t length) {
  Buffer* const buffer = file;
  char* const grown = realloc(buffer->bytes, buffer->size + length + 1);
  (void)user;
  if (!grown) return 1;
  memcpy(grown + buffer->size, data, length);
  buffer->bytes = grown;
  buffer->size += length;
  return 0;
}

static void* begin(void* user, const char* name, const char* mediaType) {
  printf("%s %s\n", name, mediaType);
  (void)user;
  return calloc(1, sizeof(Buffer));
}

static int end(void* user, void* file, int complete) {
  Buffer* const buffer = file;
  *(size_t*)user += complete ? buffer->size : 0;
  free(buffer->bytes);
  free(buffer);
  return 0;
}

int main(int argc, char** argv) {
  Buffer source = {0};
  size_t total = 0;
  char block[4096];
  for (size_t n; (n = fread(block, 1, sizeof block, stdin)) > 0;) append(NULL, &source, block, n);
  pagerex_input input = {.size = sizeof input, .data = source.bytes, .length = source.size};
  pagerex_output output = {
      .size = sizeof output, .begin = begin, .write = append, .end = end, .user = &total};
  pagerex_options options = {.size = sizeof options, .format = argc > 1 ? argv[1] : NULL};
  pagerex_result result = {.size = sizeof result};
  const int code = pagerex_convert(&input, NULL, &options, &output, &result);
  printf("%s %u files, %u bytes\n", result.sentence, (unsigned)result.output_files, (unsigned)total);
  free(source.bytes);
  return code;
}
