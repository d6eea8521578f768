// Runs one parser on what was kept of earlier finds, and then on random changes of it, for so many seconds. The same
// seed gives the same inputs. The input that ends the program is left in the current folder.
//
//   fuzz_NAME CORPUS_FOLDER [SECONDS [SEED]]
#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
// There only under the address sanitizer.
extern "C" __attribute__((weak)) void __sanitizer_set_death_callback(void (*callback)());

namespace {

using namespace std::string_view_literals;

constexpr std::size_t kLongest = 4096;
constexpr const char* kCrashFile = "crash.input";

std::string current;

void KeepInput() {
  std::ofstream(kCrashFile, std::ios::binary) << current;
  std::fprintf(stderr, "the input is kept in %s\n", kCrashFile);
}

void OnAbort(int) {
  KeepInput();
  std::_Exit(1);
}

void Try(std::string input) {
  current = std::move(input);
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(current.data()), current.size());
}

std::vector<std::string> ReadCorpus(const std::string& folder) {
  std::vector<std::filesystem::path> paths;
  for (const auto& entry : std::filesystem::directory_iterator(folder))
    paths.push_back(entry.path());
  std::sort(paths.begin(), paths.end());
  std::vector<std::string> inputs;
  for (const auto& path : paths) {
    std::ifstream file(path, std::ios::binary);
    inputs.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  }
  return inputs;
}

class Mutator {
 public:
  Mutator(std::vector<std::string> corpus, unsigned seed) : corpus_(std::move(corpus)), random_(seed) {}

  std::string Next() {
    std::string input = corpus_[Below(corpus_.size())];
    for (std::size_t changes = 1 + Below(8); changes > 0; --changes)
      Change(input);
    if (input.size() > kLongest) input.resize(kLongest);
    return input;
  }

 private:
  std::size_t Below(std::size_t end) { return end == 0 ? 0 : random_() % end; }

  char Byte() {
    static constexpr std::string_view kTelling = "\0\1\x7f\x80\xfe\xff;|*\t\r\n =[]\"<>-0123456789"sv;
    return Below(2) == 0 ? kTelling[Below(kTelling.size())] : static_cast<char>(Below(256));
  }

  void Change(std::string& input) {
    const std::size_t at = Below(input.size() + 1);
    const std::size_t length = Below(std::min<std::size_t>(input.size() - at, 64) + 1);
    switch (Below(6)) {
      case 0:
        if (at < input.size()) input[at] = Byte();
        return;
      case 1:
        if (at < input.size()) input[at] = static_cast<char>(input[at] ^ 1 << Below(8));
        return;
      case 2:
        input.insert(at, 1 + Below(4), Byte());
        return;
      case 3:
        input.erase(at, length);
        return;
      case 4:
        input.insert(Below(input.size() + 1), std::string(input, at, length));
        return;
      default: {  // the end of another one
        const std::string& other = corpus_[Below(corpus_.size())];
        input.replace(at, std::string::npos, other, Below(other.size() + 1), std::string::npos);
      }
    }
  }

  std::vector<std::string> corpus_;
  std::mt19937 random_;
};

}  // namespace

int main(int count, char** arguments) {
  if (count < 2) {
    std::fprintf(stderr, "usage: %s CORPUS_FOLDER [SECONDS [SEED]]\n", arguments[0]);
    return 2;
  }
  std::signal(SIGABRT, OnAbort);
  if (__sanitizer_set_death_callback != nullptr) __sanitizer_set_death_callback(KeepInput);
  const std::vector<std::string> corpus = ReadCorpus(arguments[1]);
  if (corpus.empty()) {
    std::fprintf(stderr, "%s is empty\n", arguments[1]);
    return 2;
  }
  for (const std::string& input : corpus)
    Try(input);

  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(count > 2 ? std::atoi(arguments[2]) : 0);
  Mutator mutator(corpus, count > 3 ? static_cast<unsigned>(std::atoi(arguments[3])) : 1);
  unsigned long tried = 0;
  for (; std::chrono::steady_clock::now() < end; ++tried)
    Try(mutator.Next());
  std::printf("%zu kept and %lu random inputs\n", corpus.size(), tried);
  return 0;
}
