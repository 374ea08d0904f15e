#include "portal/RequestBuilder.h"

#include "portal/url_encode.h"

namespace qinghe {

RequestBuilder::RequestBuilder(const QString& server, QStringView path)
    : page_(server + path.toString()) {}

RequestBuilder& RequestBuilder::encoded(const QString& name, const QString& value) {
  return raw(name, UrlEncodeField(value));
}

RequestBuilder& RequestBuilder::raw(const QString& name, const QString& value) {
  if (!parameters_.isEmpty()) parameters_ += u'&';
  parameters_ += name + u'=' + value;
  return *this;
}

QString RequestBuilder::url() const {
  return page_ + u'?' + parameters_;
}

}  // namespace qinghe
