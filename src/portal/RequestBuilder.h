#pragma once

#include <QString>
#include <QStringView>

namespace qinghe {

/// Builds a portal request parameter by parameter; reads like the row of a table:
///
///   RequestBuilder(gWebServer, paths::productAdd)
///       .encoded(u"stable"_s, u"ximu"_s).encoded(u"structn"_s, u"18"_s)
///
/// Names are written as they stand; the first parameter of a URL stands behind "?", the others
/// behind "&".
class RequestBuilder {
 public:
  RequestBuilder(const QString& server, QStringView path);

  /// Appends name=value with the value through `UrlEncodeField`.
  RequestBuilder& encoded(const QString& name, const QString& value);
  /// Appends name=value as it stands.
  RequestBuilder& raw(const QString& name, const QString& value);

  QString page() const { return page_; }  ///< without parameters
  QString url() const;                    ///< page + "?" + parameters
  QString body() const { return parameters_; }

 private:
  QString page_;
  QString parameters_;
};

/// The pages of the portal, relative to the server.
namespace paths {
inline constexpr QStringView login = u"_vti_login/_vti_login2.asp";
inline constexpr QStringView logout = u"_vti_login/_vti_logout2.asp";
inline constexpr QStringView addLogin = u"_vti_login/_vti_add_login.asp";
inline constexpr QStringView updateLogin = u"_vti_login/_vti_update_login.asp";
inline constexpr QStringView loginRows = u"_vti_login/_vti_detail_field_s.asp";
inline constexpr QStringView loginPage = u"_vti_login/_vti_detail_onepage.asp";
inline constexpr QStringView loginPageCount = u"_vti_login/_vti_detail_page.asp";
inline constexpr QStringView loginStructure = u"_vti_login/_vti_detail.asp";
inline constexpr QStringView loginImage = u"_vti_login/_vti_image.asp";
inline constexpr QStringView productRows = u"_vti_product/_vti_detail_field_s.asp";
inline constexpr QStringView productPage = u"_vti_product/_vti_detail_onepage.asp";
inline constexpr QStringView productPageCount = u"_vti_product/_vti_detail_page.asp";
inline constexpr QStringView productAdd = u"_vti_product/_vti_add.asp";
inline constexpr QStringView productDelete = u"_vti_product/_vti_delete.asp";
inline constexpr QStringView insertMessage = u"_vti_product/_vti_insert_xixi.asp";
inline constexpr QStringView productImage = u"_vti_product/_vti_image.asp";
inline constexpr QStringView review = u"_vti_comm/review.asp";
inline constexpr QStringView close = u"_vti_comm/close.asp";
inline constexpr QStringView help = u"link/help.asp";
inline constexpr QStringView preview = u"link/preview.asp";
}  // namespace paths

}  // namespace qinghe
