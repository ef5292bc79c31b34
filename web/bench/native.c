/* What a conversion takes without a browser or Node: native RUNS FORMAT DOCUMENT
 *
 * Prints the milliseconds of processor time until the first piece has ended, those until all has, both
 * medians of RUNS, and the peak memory in kilobytes, as JSON. A run that is not counted goes before. */
#define _POSIX_C_SOURCE 200809L
#include <pagerex/convert.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/resource.h>
#include <time.h>

struct run {
  double begin, first;
  char* bytes; /* all that was written, as who wants it would have it */
  size_t length, room;
};

static double now(void) {
  struct timespec time;
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return (double)time.tv_sec * 1e3 + (double)time.tv_nsec / 1e6;
}

static void* begin(void* user, const char* name, const char* media_type) {
  (void)name;
  (void)media_type;
  return user;
}

static int keep(void* user, void* file, const void* data, size_t length) {
  struct run* run = user;
  (void)file;
  if (length > run->room - run->length) {
    const size_t room = 2 * run->room + length;
    char* const bytes = realloc(run->bytes, room);
    if (!bytes) return 1;
    run->bytes = bytes;
    run->room = room;
  }
  memcpy(run->bytes + run->length, data, length);
  run->length += length;
  return 0;
}

static void page_finished(void* user, int page, const char* name) {
  struct run* run = user;
  (void)name;
  if (page == 1) run->first = now() - run->begin;
}

static int by_value(const void* left, const void* right) {
  const double one = *(const double*)left, other = *(const double*)right;
  return (one > other) - (one < other);
}

static double median(double* values, int count) {
  qsort(values, (size_t)count, sizeof *values, by_value);
  return values[count / 2];
}

static void* whole_file(const char* path, size_t* length) {
  FILE* file = fopen(path, "rb");
  if (!file) return NULL;
  fseek(file, 0, SEEK_END);
  *length = (size_t)ftell(file);
  rewind(file);
  void* data = malloc(*length);
  if (data && fread(data, 1, *length, file) != *length) *length = 0;
  fclose(file);
  return data;
}

/* Milliseconds of a conversion, or less than 0. */
static double convert(const pagerex_input* input, const char* format, int64_t page_size, double* first) {
  struct run run = {.begin = now()};
  pagerex_options options = {.size = sizeof options, .format = format, .page_size = page_size};
  options.page_finished = page_finished;
  options.user = &run;
  pagerex_output output = {.size = sizeof output, .begin = begin, .write = keep, .user = &run};
  const int code = pagerex_convert(input, NULL, &options, &output, NULL);
  const double taken = now() - run.begin;
  free(run.bytes);
  if (code != PAGEREX_RESULT_OK || run.length == 0) return -1;
  if (first) *first = run.first;
  return taken;
}

int main(int argc, char** argv) {
  enum { kMost = 100, kPiece = 20000 };
  double first[kMost], whole[kMost];
  if (argc != 4 || atoi(argv[1]) < 1 || atoi(argv[1]) > kMost) return 2;
  const int runs = atoi(argv[1]);
  pagerex_input input = {.size = sizeof input};
  input.data = whole_file(argv[3], &input.length);
  const int comes_in_pieces = argv[2][0] == 'h';
  for (int i = -1; i < runs; ++i) {
    const int at = i < 0 ? 0 : i;
    whole[at] = convert(&input, argv[2], 0, NULL);
    first[at] = whole[at];
    if (comes_in_pieces) convert(&input, argv[2], kPiece, &first[at]);
    if (whole[at] < 0) return 1;
  }
  struct rusage usage;
  getrusage(RUSAGE_SELF, &usage);
  printf("{\"first\": %.3f, \"whole\": %.3f, \"kilobytes\": %ld}\n", median(first, runs), median(whole, runs),
         usage.ru_maxrss);
  return 0;
}
