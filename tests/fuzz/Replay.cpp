// Stands in for libFuzzer where only the compiler of the house is at hand: gives every file of a corpus, and
// the same changes of each at every run, to the target.
#include <QByteArray>
#include <QDir>
#include <cstdio>
#include <random>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

void Test(const QByteArray& bytes) {
  LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.constData()),
                         static_cast<size_t>(bytes.size()));
}

QByteArray Changed(QByteArray bytes, std::minstd_rand& random) {
  const auto draw = [&](qsizetype below) { return static_cast<qsizetype>(random()) % below; };
  for (qsizetype changes = 1 + draw(4); changes > 0 && !bytes.isEmpty(); --changes) {
    const qsizetype place = draw(bytes.size());
    const qsizetype length = 1 + draw(8);
    switch (draw(4)) {
      case 0:
        bytes[place] = static_cast<char>(bytes[place] ^ (1 << draw(8)));
        break;
      case 1:
        bytes.remove(place, length);
        break;
      case 2:
        bytes.insert(place, bytes.mid(draw(bytes.size()), length));
        break;
      default:
        bytes.insert(place, "-0.9e,\"\n{;"[draw(10)]);
    }
  }
  return bytes;
}

}  // namespace

int main(int, char** argv) {
  const QDir corpus(QString::fromLocal8Bit(argv[1]));
  std::minstd_rand random(1);
  int tested = 0;
  for (const QString& name : corpus.entryList(QDir::Files, QDir::Name)) {
    QFile file(corpus.filePath(name));
    if (!file.open(QIODevice::ReadOnly)) return 1;
    const QByteArray bytes = file.readAll();
    Test(bytes);
    for (int i = 0; i < 300; ++i, ++tested) Test(Changed(bytes, random));
  }
  std::printf("%d inputs\n", tested);
  return tested > 0 ? 0 : 1;
}
