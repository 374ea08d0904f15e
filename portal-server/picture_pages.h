#pragma once

#include "PortalRequest.h"
#include "Store.h"

namespace qinghe::portal_server {

/// Pages that show a record's picture to everybody and let its owner change it.

inline constexpr std::string_view pictureUploadPath = "_vti_product/_vti_image_add.asp";

/// The picture page of an enterprise, `id`.
PortalAnswer enterpriseImagePage(const PortalRequest& request, StoreReader& store);
/// The picture page of a record, `stable` and `id`.
PortalAnswer recordImagePage(const PortalRequest& request, StoreReader& store);
/// The picture itself; `size` "small" asks for the small copy.
PortalAnswer imageFile(const PortalRequest& request, StoreReader& store);
/// Whether a request brings a picture that its sender may put there, so that it is worth reading.
bool bringsPicture(const PortalRequest& request, StoreReader& store);
/// Takes the picture that was read from a posted form for `stable` and `id`, or removes it for
/// `remove` 1, where the asking address is the owner's; leads back to the picture page.
PortalAnswer imageUploadPage(const PortalRequest& request, StoreWriter& store);
/// What an upload beyond the server's limit is told.
PortalAnswer imageTooBigPage();
/// What an upload is told while too many others are being read.
PortalAnswer imagesBusyPage();

}  // namespace qinghe::portal_server
