/* Makes a picture one that browsers show: SVG of a metafile, PNG of a bitmap.
 *
 *     picture FILE NAME     writes NAME.svg, NAME.png, NAME.jpg or NAME.gif, and says what FILE was */
#include <pagerex/convert.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

/* The whole file; null for one that cannot be read. */
static unsigned char* read_file(const char* path, size_t* length) {
  unsigned char* bytes = NULL;
  FILE* const file = fopen(path, "rb");
  if (!file) return NULL;
  if (fseek(file, 0, SEEK_END) == 0) {
    const long size = ftell(file);
    bytes = size >= 0 ? malloc((size_t)size + 1) : NULL;
    rewind(file);
    *length = bytes ? fread(bytes, 1, (size_t)size, file) : 0;
  }
  fclose(file);
  return bytes;
}

int main(int argc, char** argv) {
  size_t length = 0;
  unsigned char* const bytes = argc == 3 ? read_file(argv[1], &length) : NULL;
  if (!bytes) return fputs("Usage: picture FILE NAME\n", stderr), 1;

  /* Its kind tells how the result is to be called; without one the call says what the file is instead. */
  const pagerex_picture_format* const format = pagerex_picture_format_of(pagerex_detect(bytes, length));
  const char* const extension = format ? format->extension : "";
  char* const path = malloc(strlen(argv[2]) + strlen(extension) + 1);
  if (!path) return 1;
  strcat(strcpy(path, argv[2]), extension);

  pagerex_input input = {.size = sizeof input, .data = bytes, .length = length};
  pagerex_output output = {.size = sizeof output, .path = path};
  pagerex_result result = {.size = sizeof result};
  const int code = pagerex_convert_picture(&input, NULL, NULL, &output, &result);
  printf("%s\n", result.sentence);
  if (code == PAGEREX_RESULT_OK) printf("%s: %lu bytes\n", path, (unsigned long)result.output_bytes);
  free(path);
  free(bytes);
  return code == PAGEREX_RESULT_OK ? 0 : 2;
}
