// 2,000 reads of a 4 KB answer one after the other on one kept connection: the transfer control
// against bare libcurl, on the same server.

#include <curl/curl.h>

#include <QCoreApplication>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

#include "portal/Inet.h"
#include "support/ScriptedServer.h"

using namespace Qt::StringLiterals;

namespace {

using Clock = std::chrono::steady_clock;
constexpr int reads = 2000;
constexpr int batchSize = 20;
constexpr int rounds = 5;

size_t take(char* data, size_t size, size_t count, void* page) {
  static_cast<QByteArray*>(page)->append(data, static_cast<qsizetype>(size * count));
  return size * count;
}

/// Bare libcurl with one kept connection.
class BareCurl {
 public:
  explicit BareCurl(const QByteArray& url) : curl_(curl_easy_init()) {
    curl_easy_setopt(curl_, CURLOPT_URL, url.constData());
    curl_easy_setopt(curl_, CURLOPT_PROXY, "");
    curl_easy_setopt(curl_, CURLOPT_WRITEFUNCTION, &take);
    curl_easy_setopt(curl_, CURLOPT_WRITEDATA, &page_);
  }
  ~BareCurl() { curl_easy_cleanup(curl_); }
  BareCurl(const BareCurl&) = delete;
  BareCurl& operator=(const BareCurl&) = delete;

  qsizetype read() {
    page_.clear();
    return curl_easy_perform(curl_) == CURLE_OK ? page_.size() : -1;
  }

 private:
  CURL* curl_;
  QByteArray page_;
};

/// Milliseconds that a batch of reads takes.
template <class Read>
double batch(const Read& read) {
  const auto start = Clock::now();
  for (int i = 0; i < batchSize; ++i) {
    if (read() != 4096) std::puts("a read failed");
  }
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

double median(std::vector<double> values) {
  std::nth_element(values.begin(), values.begin() + static_cast<long>(values.size() / 2),
                   values.end());
  return values[values.size() / 2];
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  ScriptedServer server;
  server.answerWith({QByteArray(4096, 'x')});
  const auto url =
      u"http://%1/_vti_product/_vti_detail_onepage.asp?STABLE=%58"_s.arg(server.host());
  BareCurl bare(url.toLatin1());
  qinghe::Inet inet;
  inet.AccessType = 1;

  // In small batches turn by turn, so that other load on the machine meets both sides alike.
  std::vector<double> bareTimes;
  std::vector<double> inetTimes;
  for (int done = 0; done < reads * rounds; done += batchSize) {
    bareTimes.push_back(batch([&] { return bare.read(); }));
    inetTimes.push_back(batch([&] { return inet.OpenURL(url).size(); }));
  }
  if (server.connectionCount() != 2) std::puts("a connection was not kept");
  constexpr double batches = reads / batchSize;
  const double curl = median(bareTimes) * batches;
  const double own = median(inetTimes) * batches;
  std::printf("%d reads of 4 KB: transfer control %.1f ms, bare libcurl %.1f ms\n", reads, own,
              curl);
  std::printf("ratio transfer control / libcurl: %.2f (bar: at most 1.3)\n", own / curl);
  return 0;
}
