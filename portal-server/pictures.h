#pragma once

#include <map>
#include <optional>
#include <string>

#include "Store.h"
#include "picture_codec.h"

namespace qinghe::portal_server {

/// A record that has a picture: an enterprise (kind "qyxx"), or a record of its catalogue.
struct PictureSubject {
  std::string kind;  ///< "qyxx", "ximu", "fuwu", "mumu" or "tupi"
  std::int64_t id = 0;
  std::int64_t owner = 0;  ///< the enterprise
  std::string name;
};

/// The subject that these names mean, or nothing when there is no such record.
std::optional<PictureSubject> findSubject(StoreReader& store, std::string_view kind,
                                          std::string_view id);

enum class PictureSize { Large, Small };

struct PictureFile {
  std::string type;
  std::string bytes;
};

/// The picture of a subject, or nothing when it has none.
std::optional<PictureFile> loadPicture(StoreReader& store, const PictureSubject& subject,
                                       PictureSize size);
bool hasPicture(StoreReader& store, std::string_view kind, std::int64_t id);
/// Replaces the picture; none removes it.
void keepPicture(StoreWriter& store, const PictureSubject& subject,
                 const std::optional<PictureCopies>& copies);

/// Which records of a kind have one, of an enterprise's.
std::vector<std::int64_t> picturedRecords(StoreReader& store, std::string_view kind,
                                          std::int64_t owner);

/// Where a browser finds the picture of a record.
std::string pictureAddress(std::string_view kind, std::int64_t id, PictureSize size);

}  // namespace qinghe::portal_server
