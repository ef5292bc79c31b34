// Functions of strings that the C++ library of Emscripten brings along in small code, which calls one for
// each size and each place: here they are quick.

#include <string>

template class std::basic_string<char>;
