#pragma once

#include <gumbo.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <string>
#include <string_view>

/// What all rules of pages read them with: the tree that a browser makes of a page, and what it takes from
/// it.
namespace safety {

template <class Table>
bool isIn(const Table& table, std::string_view text) {
  return std::find(std::begin(table), std::end(table), text) != std::end(table);
}

std::string lower(std::string_view text);

/// Calls `visit` for each element, in the order of the page, without recursion: pages nest deeply where
/// somebody wants them to.
void forEachElement(const GumboNode* root, const std::function<void(const GumboNode&)>& visit);
void readPage(const std::string& page, const std::function<void(const GumboNode&)>& visit);

/// The name of an element in small letters.
std::string nameOf(const GumboNode& node);
/// The text that stands in an element itself.
std::string textIn(const GumboNode& node);
/// VML has an attribute that is called "on".
bool isHandler(std::string_view name);

/// Whether an attribute holds an address, by its name.
bool isAddress(std::string_view name);
/// The scheme by which a browser takes an address: controls and blanks in front do not count, nor do tabs and
/// line ends anywhere. "//" for one that goes to another host without a scheme; empty for none.
std::string schemeOf(std::string_view address);
/// Opens something, runs nothing.
bool isSafeScheme(std::string_view scheme);

/// What of a style loads or runs something; empty for nothing.
std::string runningStyle(std::string_view css);

}  // namespace safety
