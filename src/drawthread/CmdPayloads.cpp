#include "drawthread/CmdPayloads.h"

#include <algorithm>
#include <iterator>

#include <android/log.h>

#include "StatusCode.h"
#include "bounds_checked.h"
#include "text/TextUnits.h"

namespace kivgles {

namespace {

constexpr char TAG[] = "TextInfo";

// Units of `text` to copy: up to and with its ending 0. A text without one in its first `length` units is
// copied to that length, and with the unit behind when it is longer than the buffer holds.
std::size_t UnitsToCopy(const TagGLTextInfo& info, std::uint32_t length) {
    if (info.text == nullptr) {
        return 0;
    }
    const std::size_t units = TextUnits(info.text, length).size();
    const bool unitBehind = units < length || info.textLength > length;
    return units + (unitBehind ? 1 : 0);
}

}  // namespace

int TextInfo::SetTextInfo(const TagGLTextInfo& info) {
    const std::uint32_t length = std::min(info.textLength, TEXT_MAX_LEN);
    const std::size_t units = UnitsToCopy(info, length);
    const int err = memcpy_s(textBuf, sizeof(textBuf), info.text, units * sizeof(char16_t));
    if (err != 0) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "memset_s_func failed, err = %d", err);
        return STATUS_INVALID;
    }
    std::fill(textBuf + units, std::end(textBuf), u'\0');

    glTextInfo = info;
    glTextInfo.text = textBuf;
    glTextInfo.textLength = length;
    return STATUS_OK;
}

}  // namespace kivgles
