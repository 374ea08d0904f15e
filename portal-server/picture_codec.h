#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace qinghe::portal_server {

/// What is asked of a picture that somebody sends.
struct PictureLimits {
  std::size_t bytes = 4'000'000;
  int side = 12'000;            ///< pixels
  long long area = 25'000'000;  ///< pixels; what decoding may cost in memory
  int scans = 100;              ///< passes over a JPEG; a sane one has about ten
  int largeSide = 1'600;        ///< of the copy that is shown by itself
  int smallSide = 320;          ///< of the copy that is shown in a list
};

/// A picture as it is kept: made anew from its pixels, so that nothing else of what was sent
/// remains.
struct PictureCopies {
  std::string type;  ///< "image/jpeg" or "image/png"
  std::string large;
  std::string small;
};

enum class PictureFault { None, Empty, TooBig, WrongType, TooLarge, Broken };

/// What a file turned out to be: the picture, or why it is none.
struct PictureReading {
  std::optional<PictureCopies> copies = {};
  PictureFault fault = PictureFault::None;
};

/// Reads a JPEG or PNG picture, told by its content and never by its name. Nothing when it is
/// none, with the reason in `fault`. Its size is looked at before anything is decoded.
std::optional<PictureCopies> readPicture(std::string_view bytes, PictureFault& fault,
                                         const PictureLimits& limits = {});

/// The reason in words.
std::string_view faultText(PictureFault fault);

}  // namespace qinghe::portal_server
