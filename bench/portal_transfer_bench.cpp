// 2,000 reads of a 4 KB answer one after the other on one kept connection: the transfer control
// against bare libcurl, on the same server.

#include <curl/curl.h>

#include <QCoreApplication>
#include <algorithm>
#include <chrono>
#include <cstdio>

#include "portal/Inet.h"
#include "support/ScriptedServer.h"

using namespace Qt::StringLiterals;

namespace {

using Clock = std::chrono::steady_clock;
constexpr int reads = 2000;

double milliseconds(Clock::time_point start) {
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

size_t take(char* data, size_t size, size_t count, void* page) {
  static_cast<QByteArray*>(page)->append(data, static_cast<qsizetype>(size * count));
  return size * count;
}

double throughCurl(const QByteArray& url) {
  CURL* curl = curl_easy_init();
  QByteArray page;
  curl_easy_setopt(curl, CURLOPT_URL, url.constData());
  curl_easy_setopt(curl, CURLOPT_PROXY, "");
  curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, &take);
  curl_easy_setopt(curl, CURLOPT_WRITEDATA, &page);
  const auto start = Clock::now();
  for (int i = 0; i < reads; ++i) {
    page.clear();
    if (curl_easy_perform(curl) != CURLE_OK || page.size() != 4096) std::puts("curl failed");
  }
  const double time = milliseconds(start);
  curl_easy_cleanup(curl);
  return time;
}

double throughInet(const QString& url) {
  qinghe::Inet inet;
  inet.AccessType = 1;
  const auto start = Clock::now();
  for (int i = 0; i < reads; ++i) {
    if (inet.OpenURL(url).size() != 4096) std::puts("the transfer control failed");
  }
  return milliseconds(start);
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  ScriptedServer server;
  server.answerWith({QByteArray(4096, 'x')});
  const auto url =
      u"http://%1/_vti_product/_vti_detail_onepage.asp?STABLE=%58"_s.arg(server.host());

  // Turn by turn, and the best of each, so that other load meets both sides alike.
  double curl = 1e300;
  double inet = 1e300;
  for (int run = 0; run < 7; ++run) {
    server.clear();
    curl = std::min(curl, throughCurl(url.toLatin1()));
    server.clear();
    inet = std::min(inet, throughInet(url));
    if (server.connectionCount() != 1) std::puts("the connection was not kept");
  }
  std::printf("%d reads of 4 KB: transfer control %.1f ms, bare libcurl %.1f ms\n", reads, inet,
              curl);
  std::printf("ratio transfer control / libcurl: %.2f (bar: at most 1.3)\n", inet / curl);
  return 0;
}
