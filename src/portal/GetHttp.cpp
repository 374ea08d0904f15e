#include "portal/GetHttp.h"

#include <algorithm>

#include "portal/KeptConnection.h"
#include "portal/Transfer.h"
#include "portal/TransferError.h"
#include "values/code_page.h"

namespace qinghe {

namespace {
constexpr qsizetype blockSize = 256;
constexpr auto pollInterval = std::chrono::seconds(1);
}  // namespace

QString GetHttp::GetUrl(const QString& url) try {
  const auto wire = WireUrl::parse(toCodePage(url));
  if (!wire) return {};
  TransferRequest request;
  request.url = *wire;
  request.agent = "vb wininet";
  request.proxies = [](const WireUrl&) { return QList<QByteArray>{QByteArray()}; };
  KeptConnection connection;
  Transfer transfer(connection, std::move(request));
  while (!transfer.step(pollInterval)) {
  }
  const auto page = transfer.takeBody();
  QString text;
  for (qsizetype start = 0; start < page.size(); start += blockSize) {
    const auto length = std::min(blockSize, page.size() - start);
    text += fromCodePage(QByteArrayView(page).sliced(start, length)).left(length);
  }
  return text;
} catch (const TransferError&) {
  return {};
}

}  // namespace qinghe
