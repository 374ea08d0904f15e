// Encoding a field: UrlEncodeField, from text to encoded text, against curl_easy_escape on the
// same bytes.

#include <curl/curl.h>

#include <QString>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>

#include "portal/url_encode.h"
#include "values/code_page.h"

using namespace Qt::StringLiterals;

namespace {

/// The processor's time, so that other load on the machine does not count.
double nanoseconds(int repeats, const std::function<size_t()>& work) {
  double best = 1e300;
  size_t sink = 0;
  for (int run = 0; run < 15; ++run) {
    const auto start = std::clock();
    for (int i = 0; i < repeats; ++i) sink += work();
    best = std::min(best, 1e9 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC /
                              static_cast<double>(repeats));
  }
  if (sink == 0) std::puts("nothing encoded");
  return best;
}

void compare(CURL* curl, const char* name, const QString& value) {
  const auto bytes = qinghe::toCodePage(value);
  const int repeats = std::max(10, static_cast<int>(20'000'000 / (bytes.size() + 20)));
  const double own = nanoseconds(
      repeats, [&] { return static_cast<size_t>(qinghe::UrlEncodeField(value).size()); });
  const double other = nanoseconds(repeats, [&] {
    char* escaped = curl_easy_escape(curl, bytes.constData(), static_cast<int>(bytes.size()));
    const auto first = static_cast<size_t>(escaped[0]);
    curl_free(escaped);
    return first;
  });
  std::printf("%-28s %8lld bytes: UrlEncodeField %10.0f ns, curl_easy_escape %10.0f ns\n", name,
              static_cast<long long>(bytes.size()), own, other);
  std::printf("ratio curl_easy_escape / UrlEncodeField, %s: %.2f (bar: at least 1)\n", name,
              other / own);
}

}  // namespace

int main() {
  CURL* curl = curl_easy_init();
  compare(curl, "a number", u"12"_s);
  compare(curl, "a condition", u"id=25 and qiye_id=7"_s);
  compare(curl, "a Chinese title", u"《大学语文》（第三版）上册"_s);
  compare(curl, "a long Latin text", u"Plain text of some length, 1234. "_s.repeated(500));
  compare(curl, "a long Chinese text", u"本书系统介绍了大学语文的基本内容。"_s.repeated(500));
  curl_easy_cleanup(curl);
  return 0;
}
