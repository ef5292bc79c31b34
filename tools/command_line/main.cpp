/// The command line of the library: documents to pages, one or many.

#include "arguments.h"
#include "batch.h"
#include "one_document.h"
#include "picture.h"
#include "two_paths.h"

namespace {

int run(const cli::Request& request) {
  switch (request.form) {
    case cli::Form::kTwoPaths:
      return cli::convertTwoPaths(request);
    case cli::Form::kInfo:
      return cli::tellInfo(request);
    case cli::Form::kManyFiles:
      return cli::convertManyFiles(request);
    case cli::Form::kPicture:
      return cli::convertPicture(request);
    case cli::Form::kOneDocument:
      break;
  }
  return cli::convertOneDocument(request);
}

}  // namespace

int main(int argc, char** argv) {
  cli::Request request;
  int exitCode = 0;
  return cli::readArguments(argc, argv, request, exitCode) ? run(request) : exitCode;
}
