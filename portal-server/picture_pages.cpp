#include "picture_pages.h"

#include "BrowserPage.h"
#include "pictures.h"
#include "sessions.h"
#include "text_codec.h"

namespace qinghe::portal_server {

namespace {

std::string pageAddress(const PictureSubject& subject) {
  const std::string id = std::to_string(subject.id);
  if (subject.kind == "qyxx") return "/_vti_login/_vti_image.asp?id=" + id;
  return "/_vti_product/_vti_image.asp?stable=" + subject.kind + "&id=" + id;
}

void addForms(BrowserPage& page, const PictureSubject& subject, bool pictured) {
  const std::string names = "<input type=\"hidden\" name=\"stable\" value=\"" + subject.kind +
                            "\"><input type=\"hidden\" name=\"id\" value=\"" +
                            std::to_string(subject.id) + "\">";
  const std::string form = std::string("<form method=\"post\" enctype=\"multipart/form-data\"") +
                           " action=\"/" + std::string(pictureUploadPath) + "\">" + names;
  page.raw(form);
  page.raw("<input type=\"file\" id=\"picture\" name=\"picture\" aria-label=\"图片文件\" ");
  page.raw("accept=\"image/jpeg,image/png\" required><button id=\"upload\">");
  page.raw(pictured ? "更换图片" : "上传图片").raw("</button></form>\n");
  if (pictured) {
    page.raw(form).raw("<input type=\"hidden\" name=\"remove\" value=\"1\">");
    page.raw("<button id=\"remove\" class=\"plain\">删除图片</button></form>\n");
  }
  page.element("p", "JPEG 或 PNG 图片，不超过 4 MB。", "quiet");
}

PortalAnswer subjectPage(const std::optional<PictureSubject>& subject, const PortalRequest& request,
                         StoreReader& store, std::string_view note = {}, unsigned status = 200) {
  if (!subject) {
    BrowserPage page("图片");
    page.element("h1", "图片").element("p", "没有这条记录。");
    return std::move(page).finish(404);
  }
  BrowserPage page(subject->name);
  page.element("h1", subject->name);
  if (!note.empty()) page.element("p", note, "note");
  const bool pictured = hasPicture(store, subject->kind, subject->id);
  if (pictured) {
    page.raw("<p class=\"picture\"><img id=\"shown\" alt=\"图片\" src=\"");
    page.raw(pictureAddress(subject->kind, subject->id, PictureSize::Large)).raw("\"></p>\n");
  } else {
    page.element("p", "暂无图片", "none");
  }
  if (contains(loggedInAt(store, request.address), subject->owner)) {
    addForms(page, *subject, pictured);
  }
  return std::move(page).finish(status);
}

std::optional<PictureSubject> askedSubject(const PortalRequest& request, StoreReader& store) {
  return findSubject(store, request.parameters.bytes("stable"), request.parameters.bytes("id"));
}

// A page of somebody else's, open in the owner's browser, could post in the owner's name.
bool isFromOwnPage(const PortalRequest& request) {
  if (request.origin.empty()) return true;
  const std::size_t slashes = request.origin.find("://");
  return slashes != std::string::npos && request.origin.substr(slashes + 3) == request.host;
}

bool mayChange(const PictureSubject& subject, const PortalRequest& request, StoreReader& store) {
  return request.posted && isFromOwnPage(request) &&
         contains(loggedInAt(store, request.address), subject.owner);
}

bool removes(const PortalRequest& request) {
  return request.parameters.bytes("remove") == "1";
}

PortalAnswer refusedUpload(std::string_view words, unsigned status) {
  BrowserPage page("图片");
  page.element("h1", "图片").element("p", words, "note");
  return std::move(page).finish(status);
}

}  // namespace

PortalAnswer enterpriseImagePage(const PortalRequest& request, StoreReader& store) {
  return subjectPage(findSubject(store, "qyxx", request.parameters.bytes("id")), request, store);
}

PortalAnswer recordImagePage(const PortalRequest& request, StoreReader& store) {
  auto subject = askedSubject(request, store);
  if (subject && subject->kind == "qyxx") subject.reset();
  return subjectPage(subject, request, store);
}

PortalAnswer imageFile(const PortalRequest& request, StoreReader& store) {
  const bool small = request.parameters.bytes("size") == "small";
  const auto subject = askedSubject(request, store);
  auto picture = subject
                     ? loadPicture(store, *subject, small ? PictureSize::Small : PictureSize::Large)
                     : std::nullopt;
  if (!picture) return {.status = 404, .note = "no picture", .forBrowser = true};
  return {.body = std::move(picture->bytes),
          .forBrowser = true,
          .contentType = std::move(picture->type)};
}

bool bringsPicture(const PortalRequest& request, StoreReader& store) {
  const auto subject = askedSubject(request, store);
  return subject && !removes(request) && mayChange(*subject, request, store);
}

PortalAnswer imageUploadPage(const PortalRequest& request, StoreWriter& store) {
  const auto subject = askedSubject(request, store);
  if (!subject) return subjectPage(subject, request, store);
  if (!mayChange(*subject, request, store)) {
    PortalAnswer answer =
        subjectPage(subject, request, store, "只有登录的本企业才能更改这张图片。", 403);
    answer.note = "foreign picture";
    return answer;
  }
  if (removes(request)) {
    keepPicture(store, *subject, {});
  } else if (!request.picture) {
    // It was not yet the owner's when the picture came; nobody else's is read.
    return imagesBusyPage();
  } else if (!request.picture->copies) {
    return subjectPage(subject, request, store, faultText(request.picture->fault), 400);
  } else {
    keepPicture(store, *subject, request.picture->copies);
  }
  return {.status = 303, .forBrowser = true, .location = pageAddress(*subject)};
}

PortalAnswer imageTooBigPage() {
  return refusedUpload("图片文件太大，不能超过 4 MB。请后退，另选一张图片。", 413);
}

PortalAnswer imagesBusyPage() {
  return refusedUpload("现在上传的图片太多，请稍后再试。", 503);
}

}  // namespace qinghe::portal_server
