#pragma once

#include <norvane/platform/Result.h>

#include <qpdf/QPDF.hh>

#include <string_view>

namespace norvane {

/// Checks the bytes of a file before anything decodes them: follows the chain of cross-reference sections and
/// looks where they lead. Sections and object streams must stay small when inflated. What is no such chain is
/// refused as damaged; an encrypted file, whose streams cannot be measured, with the code for that.
Failure checkCrossReferences(std::string_view file);

/// Checks the shape of a document's objects: the page tree is a tree of bounded size and depth, and no chain
/// of references is so long that copying it, which recurses, could exhaust the stack.
Failure checkObjectGraph(QPDF& qpdf);

} // namespace norvane
