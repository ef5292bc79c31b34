# zlib from Debian's source package, which tools/wasm-setup unpacks, for find_package(ZLIB) of the wasm build.
set(zlib_source ${PROJECT_SOURCE_DIR}/build/zlib/source)
if(NOT EXISTS ${zlib_source}/zlib.h)
  message(FATAL_ERROR "No source of zlib in ${zlib_source}: run tools/wasm-setup")
endif()
if(NOT TARGET ZLIB::ZLIB)
  # No gz files: they would want a file system.
  set(zlib_files adler32 compress crc32 deflate inffast inflate inftrees trees uncompr zutil)
  list(TRANSFORM zlib_files PREPEND ${zlib_source}/)
  list(TRANSFORM zlib_files APPEND .c)
  add_library(zlib_wasm STATIC EXCLUDE_FROM_ALL ${zlib_files})
  target_include_directories(zlib_wasm SYSTEM PUBLIC ${zlib_source})
  # Tables that are made when they are needed are no bytes on the way.
  target_compile_options(zlib_wasm PRIVATE -w -Os -finline-functions -DDYNAMIC_CRC_TABLE)
  add_library(ZLIB::ZLIB ALIAS zlib_wasm)
endif()
set(ZLIB_FOUND TRUE)
