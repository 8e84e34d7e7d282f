#ifndef KIVGLES_TEXT_FONTFILE_H
#define KIVGLES_TEXT_FONTFILE_H

#include <string>

#include <ft2build.h>
#include FT_FREETYPE_H

namespace kivgles {

// Opens the first face of a font file, which is then the caller's. False, with `face` null, when FreeType
// cannot; and for what is there but is no regular file: opening a pipe would wait for its writer.
bool OpenFontFile(FT_Library library, const std::string& path, FT_Face& face);

}  // namespace kivgles

#endif  // KIVGLES_TEXT_FONTFILE_H
