#include "platform/posix/Capi20Library.h"

#include <algorithm>
#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "platform/posix/ChildSetup.h"

namespace vorlix {

struct Capi20Library::Functions {
  unsigned (*isinstalled)() = nullptr;
  unsigned (*reg)(unsigned connections, unsigned blocks, unsigned length, unsigned* applId) = nullptr;
  unsigned (*release)(unsigned applId) = nullptr;
  unsigned (*put_message)(unsigned applId, unsigned char* message) = nullptr;
  unsigned (*get_message)(unsigned applId, unsigned char** message) = nullptr;
  unsigned (*waitformessage)(unsigned applId, timeval* limit) = nullptr;
  unsigned char* (*get_manufacturer)(unsigned controller, unsigned char* text) = nullptr;
  unsigned char* (*get_version)(unsigned controller, unsigned char* version) = nullptr;
  unsigned (*get_profile)(unsigned controller, unsigned char* profile) = nullptr;
  int (*fileno)(unsigned applId) = nullptr;
};

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds kLimit{3000};
// For what comes back at once unless something is wrong.
constexpr milliseconds kShortLimit{20};
// Released in the middle of a message, the library goes on for some seconds: a new registration waits for that.
constexpr milliseconds kReleaseLimit{100};
// "Readable" and "nothing there" in turn, for ever, is how the library shows that the other side has gone.
constexpr int kMostEmptyReads = 5;
// The library's remote modules copy a frame of 2,173 bytes from where the message begins, however short it is: read
// beyond the end of the heap that would be the end of the program.
constexpr std::size_t kPutRoom = 4096;

template <class Function>
bool Find(void* library, const char* name, Function& function) {
  function = reinterpret_cast<Function>(dlsym(library, name));
  return function != nullptr;
}

bool FindAll(void* library, Capi20Library::Functions& functions) {
  return Find(library, "capi20_isinstalled", functions.isinstalled) &&
         Find(library, "capi20_register", functions.reg) && Find(library, "capi20_release", functions.release) &&
         Find(library, "capi20_put_message", functions.put_message) &&
         Find(library, "capi20_get_message", functions.get_message) &&
         Find(library, "capi20_waitformessage", functions.waitformessage) &&
         Find(library, "capi20_get_manufacturer", functions.get_manufacturer) &&
         Find(library, "capi20_get_version", functions.get_version) &&
         Find(library, "capi20_get_profile", functions.get_profile) && Find(library, "capi20_fileno", functions.fileno);
}

int PrintNothing(const char*, va_list) {
  return 0;
}

// The library tells its doings on stderr, which is the user's terminal.
void Silence(void* library) {
  void (*setPrinter)(int (*)(const char*, va_list)) = nullptr;
  if (Find(library, "register_dbg_vprintf", setPrinter)) setPrinter(PrintNothing);
}

[[noreturn]] void LoadInChild(const char* file) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  RestoreSignals();
  std::atexit([] { _exit(1); });  // the library ends the process: nothing of ours may run
  const int nothing = open("/dev/null", O_RDWR);
  dup2(nothing, STDOUT_FILENO);
  dup2(nothing, STDERR_FILENO);
  CloseDescriptorsBut(-1);
  _exit(dlopen(file, RTLD_NOW) == nullptr ? 1 : 0);
}

// Where the library cannot make its shared memory it ends the whole process while it is loaded, so a child tries first.
bool SurvivesLoading(const char* file) {
  const pid_t child = fork();
  if (child == 0) LoadInChild(file);
  if (child < 0) return false;
  const auto end = steady_clock::now() + kLimit;
  int status = 0;
  pid_t ended = 0;
  while ((ended = waitpid(child, &status, WNOHANG)) == 0 && steady_clock::now() < end) {
    std::this_thread::sleep_for(milliseconds(1));
  }
  if (ended == 0) {
    kill(child, SIGKILL);
    waitpid(child, &status, 0);
  }
  return ended == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// The library reads a frame of any length into a buffer of its own size. A frame from the network begins with 0x80 and
// its length, little endian, or with the length alone, big endian.
enum class Frame { kUsable, kBegun, kTooLong };

// kBegun: too few bytes are there to tell. A driver that is no socket is left to the library.
Frame NextFrame(int descriptor) {
  unsigned char head[3];
  const ssize_t got = recv(descriptor, head, sizeof head, MSG_PEEK | MSG_DONTWAIT);
  if (got <= 0) return Frame::kUsable;
  if (got < static_cast<ssize_t>(sizeof head)) return Frame::kBegun;
  const std::size_t length = head[0] == 0x80 ? head[1] | head[2] << 8 : head[0] << 8 | head[1];
  return length > CapiDriver::kLongestMessage ? Frame::kTooLong : Frame::kUsable;
}

}  // namespace

bool Capi20Library::IsDLLAvailable() {
  if (functions_) return true;
  if (!SurvivesLoading(file_.c_str())) return false;
  void* library = dlopen(file_.c_str(), RTLD_NOW);  // for good: a call may still be in it
  auto functions = std::make_shared<Functions>();
  if (library == nullptr || !FindAll(library, *functions)) return false;
  Silence(library);
  functions_ = std::move(functions);
  thread_ = std::make_unique<CallThread>();
  return true;
}

// False when the library is not there or has not come back in time; the result is then still the thread's.
template <class Result>
bool Capi20Library::Ask(const std::shared_ptr<Result>& result, std::function<Result(const Functions&)> call) {
  if (!functions_) return false;
  const bool started = thread_->Start([library = functions_, result, call = std::move(call)] {  //
    *result = call(*library);
  });
  return started && thread_->Wait(kLimit);
}

std::uint32_t Capi20Library::CAPI_INSTALLED() {
  const auto code = std::make_shared<std::uint32_t>();
  return Ask<std::uint32_t>(code, [](auto& library) { return library.isinstalled(); }) ? *code : kCapiNotInstalled;
}

// The size of the message buffer is the library's own affair.
Capi20Library::Registered Capi20Library::Register(const Functions& library, const CapiLimits& limits) {
  Registered result;
  const auto attempt = [&] {
    result.code = library.reg(limits.maxLogicalConnection, limits.maxBDataBlocks, limits.maxBDataLen, &result.applId);
  };
  attempt();
  CapiProfile profile{};
  // The connection for profiles is kept until a registration is released, even when it is dead.
  if (result.code == kCapiOk && library.get_profile(0, profile.data()) != kCapiOk) {
    library.release(result.applId);
    attempt();
  }
  if (result.code == kCapiOk) result.descriptor = library.fileno(result.applId);
  return result;
}

std::uint32_t Capi20Library::CAPI_REGISTER(const CapiLimits& limits, std::uint32_t& applId) {
  applId = 0;
  emptyReads_ = 0;
  if (!functions_ || !thread_->Wait(releasing_ ? kLimit : milliseconds(0))) return kCapiNotInstalled;
  releasing_ = false;
  const auto result = std::make_shared<Registered>();
  if (!Ask<Registered>(result, [limits](auto& library) { return Register(library, limits); })) {
    thread_->Then([library = functions_, result] {  // it came too late: nobody knows of it
      if (result->code == kCapiOk) library->release(result->applId);
    });
    return kCapiNotInstalled;
  }
  if (result->code == kCapiOk) applId = result->applId;
  descriptor_ = result->descriptor;
  return result->code;
}

std::uint32_t Capi20Library::CAPI_RELEASE(std::uint32_t applId) {
  if (!functions_) return kCapiNotInstalled;
  if (fetching_) shutdown(descriptor_, SHUT_RDWR);  // brings the thread back from a message that does not end
  fetching_.reset();
  descriptor_ = -1;
  const auto code = std::make_shared<std::uint32_t>();
  thread_->Then([library = functions_, code, applId] { *code = library->release(applId); });
  releasing_ = !thread_->Wait(kReleaseLimit);
  return releasing_ ? kCapiOk : *code;  // on its way
}

std::uint32_t Capi20Library::CAPI_GET_VERSION(CapiVersion& version) {
  const auto answer = std::make_shared<std::optional<CapiVersion>>();
  const bool asked = Ask<std::optional<CapiVersion>>(answer, [](auto& library) -> std::optional<CapiVersion> {
    CapiVersion numbers{};
    if (library.get_version(0, reinterpret_cast<unsigned char*>(numbers.data())) == nullptr) return std::nullopt;
    return numbers;
  });
  version = asked ? answer->value_or(CapiVersion{}) : CapiVersion{};
  return asked && *answer ? kCapiOk : kCapiNotInstalled;
}

std::uint32_t Capi20Library::CAPI_GET_MANUFACTURER(std::string& text) {
  const auto answer = std::make_shared<std::string>();
  const bool asked = Ask<std::string>(answer, [](auto& library) -> std::string {
    std::array<unsigned char, 256> buffer{};  // larger than what the library may write, so a zero byte stays
    if (library.get_manufacturer(0, buffer.data()) == nullptr) return {};
    return reinterpret_cast<const char*>(buffer.data());
  });
  text = asked ? *answer : std::string();
  return asked ? kCapiOk : kCapiNotInstalled;
}

std::uint32_t Capi20Library::CAPI_GET_PROFILE(CapiProfile& profile, std::uint32_t controller) {
  using Answer = std::pair<std::uint32_t, CapiProfile>;
  const auto answer = std::make_shared<Answer>(kCapiNotInstalled, CapiProfile{});
  const bool asked = Ask<Answer>(answer, [controller](auto& library) {
    Answer result{};
    result.first = library.get_profile(controller, result.second.data());
    return result;
  });
  const bool ok = asked && answer->first == kCapiOk;
  profile = ok ? answer->second : CapiProfile{};
  return asked ? answer->first : kCapiNotInstalled;
}

Capi20Library::Received Capi20Library::Fetch(const Functions& library, std::uint32_t applId) {
  Received received;
  timeval noTime{};
  received.code = library.waitformessage(applId, &noTime);
  if (received.code != kCapiOk) return received;
  const Frame frame = NextFrame(library.fileno(applId));
  received.readable = frame != Frame::kBegun;
  received.code = frame == Frame::kBegun ? kCapiQueueEmpty : kCapiIllegalApplication;
  if (frame != Frame::kUsable) return received;
  unsigned char* message = nullptr;
  received.code = library.get_message(applId, &message);
  if (received.code != kCapiOk || message == nullptr) return received;
  const std::size_t length = message[0] | message[1] << 8;
  received.bytes.assign(reinterpret_cast<const char*>(message), std::min(length, kLongestMessage));
  return received;
}

std::uint32_t Capi20Library::CAPI_GET_MESSAGE(std::uint32_t applId, std::string& message) {
  message.clear();
  if (!functions_) return kCapiNotInstalled;
  const milliseconds limit = fetching_ ? milliseconds(0) : kShortLimit;
  if (!fetching_) {
    const auto received = std::make_shared<Received>();
    const bool started = thread_->Start([library = functions_, received, applId] {  //
      *received = Fetch(*library, applId);
    });
    if (!started) return kCapiQueueEmpty;
    fetching_ = {received, steady_clock::now()};
  }
  if (!thread_->Wait(limit)) return StillFetching();
  const Received received = *fetching_->received;
  fetching_.reset();
  message = received.bytes;
  return Judge(received);
}

// A message of which only a part has come.
std::uint32_t Capi20Library::StillFetching() {
  return steady_clock::now() - fetching_->since < kLimit ? kCapiQueueEmpty : kCapiIllegalApplication;
}

std::uint32_t Capi20Library::Judge(const Received& received) {
  const bool emptyRead = received.readable && received.code == kCapiQueueEmpty;
  emptyReads_ = emptyRead ? emptyReads_ + 1 : 0;
  return emptyReads_ >= kMostEmptyReads ? kCapiIllegalApplication : received.code;
}

// The length stands in the message. Goes behind a message that is still being read, in the order of the calls.
std::uint32_t Capi20Library::CAPI_PUT_MESSAGE(std::uint32_t applId, std::string_view message) {
  if (!functions_) return kCapiNotInstalled;
  const auto code = std::make_shared<std::uint32_t>();
  std::string room(message);
  room.resize(std::max(room.size(), kPutRoom));
  thread_->Then([library = functions_, code, applId, bytes = std::move(room)]() mutable {
    *code = library->put_message(applId, reinterpret_cast<unsigned char*>(bytes.data()));
  });
  return thread_->Wait(kShortLimit) ? *code : kCapiOk;  // on its way
}

void Capi20Library::StartAsking() {
  answer_.reset();  // that of an earlier question says nothing
  if (!functions_) return;
  const auto answer = std::make_shared<std::uint32_t>(kCapiNotInstalled);
  if (thread_->Start([library = functions_, answer] { *answer = library->isinstalled(); })) answer_ = answer;
}

bool Capi20Library::HasAnswered() {
  return answer_ && thread_->Wait(milliseconds(0)) && *answer_ == kCapiOk;
}

}  // namespace vorlix
