#pragma once

#include "support/canvas.h"
#include "support/word_document_writer.h"

/// The drawings and pictures of the sample document.
namespace sample {

/// Puts the picture of bullets into a paragraph, hidden. Its bookmark must be the document's first.
void addBulletPicture(support::Paragraph& paragraph, support::drawing::Canvas& canvas);
void addPictureBullets(support::WordDocument& document);
/// A page of shapes and pictures. A shape leads to the bookmark "Place".
void addDrawings(support::WordDocument& document, support::drawing::Canvas& canvas);

}  // namespace sample
