#pragma once

#include "support/word_document_writer.h"

/// The documents that the tests of shapes and pictures look at.
void fillShapes(support::WordDocument& doc);
void fillPictures(support::WordDocument& doc);
