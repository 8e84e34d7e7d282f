#include "text/FontFile.h"

#include <sys/stat.h>

namespace kivgles {

bool OpenFontFile(FT_Library library, const std::string& path, FT_Face& face) {
    face = nullptr;
    struct stat file {};
    if (stat(path.c_str(), &file) == 0 && !S_ISREG(file.st_mode)) {
        return false;
    }
    return FT_New_Face(library, path.c_str(), 0, &face) == 0;
}

}  // namespace kivgles
