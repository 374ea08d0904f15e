// Start to first painted main window, and memory then: the client against a minimal Qt program,
// started in turn so that both meet the same machine.
#include <time.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int rounds = 21;

struct Sample {
  double milliseconds = 0;
  double mebibytes = 0;
};

Sample run(const QString& program, const QString& configuration) {
  timespec time{};
  clock_gettime(CLOCK_MONOTONIC, &time);
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(u"QINGHE_BENCH_START"_s,
                     QString::number(qint64{time.tv_sec} * 1'000'000'000 + time.tv_nsec));
  environment.insert(u"XDG_CONFIG_HOME"_s, configuration);
  if (qEnvironmentVariableIsEmpty("DISPLAY")) {
    environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
  }
  QProcess process;
  process.setProcessEnvironment(environment);
  process.start(program, QStringList());
  process.waitForFinished();
  const QByteArrayList words = process.readAllStandardOutput().simplified().split(' ');
  return {words.value(0).toDouble() / 1e6, words.value(1).toDouble() / 1024};
}

Sample median(std::vector<Sample> samples) {
  const auto middle = samples.begin() + static_cast<std::ptrdiff_t>(samples.size() / 2);
  Sample result;
  std::nth_element(samples.begin(), middle, samples.end(), [](const Sample& a, const Sample& b) {
    return a.milliseconds < b.milliseconds;
  });
  result.milliseconds = middle->milliseconds;
  std::nth_element(samples.begin(), middle, samples.end(),
                   [](const Sample& a, const Sample& b) { return a.mebibytes < b.mebibytes; });
  result.mebibytes = middle->mebibytes;
  return result;
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  const QTemporaryDir configuration;
  QDir(configuration.path()).mkpath(u"qinghe"_s);
  QFile settings(configuration.filePath(u"qinghe/qinghe.ini"_s));
  if (!settings.open(QIODevice::WriteOnly)) return 1;
  settings.write("[config]\nWebServer=127.0.0.1:8180\nAccessType=2\n");
  settings.close();

  std::vector<Sample> client;
  std::vector<Sample> minimal;
  for (int round = 0; round < rounds; ++round) {
    client.push_back(run(QStringLiteral(QINGHE_BENCH_CLIENT), configuration.path()));
    minimal.push_back(run(QStringLiteral(QINGHE_BENCH_MINIMAL), configuration.path()));
  }
  const Sample ours = median(client);
  const Sample bare = median(minimal);
  std::printf("client   %7.1f ms  %6.1f MiB\n", ours.milliseconds, ours.mebibytes);
  std::printf("minimal  %7.1f ms  %6.1f MiB\n", bare.milliseconds, bare.mebibytes);
  std::printf("ratio start %.2f (bar 2), memory %.2f (bar 2)\n",
              ours.milliseconds / bare.milliseconds, ours.mebibytes / bare.mebibytes);
  return 0;
}
