// A FileStore in memory that can fail each operation on demand and keeps what was asked. Like on a disk, a file needs
// its folder: AddFile() and AddFolder() make the parents, the store's own operations do not.
#pragma once

#include <cerrno>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "platform/FileStore.h"

namespace vorlix {

class MemoryFileStore : public FileStore {
 public:
  enum class Operation { kRead, kOverwrite, kAppend, kRename, kRemove, kCopy, kMakeFolder };
  struct Request {
    Operation operation;
    std::string path;  // the first one of Rename and Copy
  };

  MemoryFileStore() { nodes_["/"].folder = true; }

  // From now on that operation fails on paths that end in `pathEnd`: for the next `times`, or always (-1).
  void Fail(Operation operation, int error, std::string pathEnd = {}, int times = -1) {
    faults_.push_back({operation, error, std::move(pathEnd), times});
  }
  void FailNothing() { faults_.clear(); }
  // A folder that this user may not write in.
  void Forbid(const std::string& folder) { nodes_.at(Key(folder)).writable = false; }

  void AddFolder(const std::string& path) {
    const std::string key = Key(path);
    if (nodes_.contains(key)) return;
    AddFolder(Parent(key));
    NewNode(key).folder = true;
  }
  void AddFile(const std::string& path, std::string_view bytes) {
    AddFolder(Parent(Key(path)));
    Put(Key(path), std::string(bytes));
  }
  // What is made from now on lies on another drive.
  void ChangeDrive() { ++device_; }
  // The content of a file; empty for one that is not there.
  std::string Content(const std::string& path) const {
    const Node* node = Find(path);
    return node == nullptr ? std::string() : node->bytes;
  }
  bool Exists(const std::string& path) const { return Find(path) != nullptr; }

  // What was asked, failed operations included. Stat, List and Read are not writes.
  mutable std::vector<Request> requests;
  int Count(Operation operation, std::string_view pathEnd = {}) const {
    int count = 0;
    for (const Request& request : requests) {
      if (request.operation == operation && request.path.ends_with(pathEnd)) ++count;
    }
    return count;
  }
  int Writes() const { return static_cast<int>(requests.size()) - Count(Operation::kRead); }

  FileInfo Stat(const std::string& path) const override {
    const Node* node = Find(path);
    if (node == nullptr) return {};
    return {node->folder ? FileInfo::Kind::kFolder : FileInfo::Kind::kFile, node->bytes.size(), node->modified,
            node->identity, node->device};
  }
  IoResult Read(const std::string& path, std::string& bytes) const override {
    bytes.clear();
    if (auto fault = Ask(Operation::kRead, path)) return *fault;
    const Node* node = Find(path);
    if (node == nullptr) return Failure("open", path, ENOENT);
    if (node->folder) return Failure("read", path, EISDIR);
    bytes = node->bytes;
    return {};
  }
  IoResult Overwrite(const std::string& path, std::string_view bytes) override {
    return Write(Operation::kOverwrite, path, std::string(bytes));
  }
  IoResult Append(const std::string& path, std::string_view bytes, bool ownLine = false) override {
    std::string whole = Content(path);
    if (ownLine && !whole.empty() && whole.back() != '\n') whole += "\r\n";
    return Write(Operation::kAppend, path, whole += bytes);
  }
  IoResult Rename(const std::string& from, const std::string& to) override {
    if (auto fault = Ask(Operation::kRename, from)) return *fault;
    if (!Exists(from) || !Exists(Parent(Key(to)))) return Failure("rename", from, ENOENT);
    if (!CanWriteIn(Parent(Key(from))) || !CanWriteIn(Parent(Key(to)))) return Failure("rename", from, EACCES);
    if (Key(from) == Key(to)) return {};
    auto moved = Take(Key(from));
    Take(Key(to));
    for (auto& [key, node] : moved)
      nodes_[Key(to) + key] = std::move(node);
    return {};
  }
  IoResult Remove(const std::string& path) override {
    if (auto fault = Ask(Operation::kRemove, path)) return *fault;
    const Node* node = Find(path);
    if (node == nullptr) return {};
    if (node->folder) return Failure("remove", path, EISDIR);
    if (!CanWriteIn(Parent(Key(path)))) return Failure("remove", path, EACCES);
    Take(Key(path));
    return {};
  }
  IoResult Copy(const std::string& from, const std::string& to, bool overwrite) override {
    if (auto fault = Ask(Operation::kCopy, from)) return *fault;
    const Node* node = Find(from);
    if (node == nullptr) return Failure("open", from, ENOENT);
    if (node->folder) return Failure("read", from, EISDIR);
    if (!overwrite && Exists(to)) return Failure("open", to, EEXIST);
    return PutChecked(to, node->bytes);
  }
  IoResult MakeFolder(const std::string& path) override {
    if (auto fault = Ask(Operation::kMakeFolder, path)) return *fault;
    if (Exists(path)) return Failure("make folder", path, EEXIST);
    if (!Exists(Parent(Key(path)))) return Failure("make folder", path, ENOENT);
    if (!CanWriteIn(Parent(Key(path)))) return Failure("make folder", path, EACCES);
    NewNode(Key(path)).folder = true;
    return {};
  }
  std::vector<std::string> List(const std::string& path) const override {
    std::vector<std::string> names;
    for (const auto& [key, node] : nodes_) {
      if (key != "/" && Parent(key) == Key(path)) names.push_back(key.substr(key.rfind('/') + 1));
    }
    return names;
  }
  bool IsWritableFolder(const std::string& path) const override { return CanWriteIn(Key(path)); }

 private:
  struct Node {
    bool folder = false;
    bool writable = true;
    std::string bytes;
    std::int64_t modified = 0;
    std::uint64_t identity = 0;
    std::uint64_t device = 0;
  };
  struct Fault {
    Operation operation;
    int error;
    std::string pathEnd;
    int times;
  };

  static IoResult Failure(const std::string& what, const std::string& path, int error) {
    return {error, what + " " + path + ": " + std::generic_category().message(error)};
  }
  static std::string Key(std::string path) {
    while (path.size() > 1 && path.back() == '/')
      path.pop_back();
    return path;
  }
  static std::string Parent(const std::string& key) {
    const auto slash = key.rfind('/');
    return slash == 0 || slash == std::string::npos ? "/" : key.substr(0, slash);
  }
  const Node* Find(const std::string& path) const {
    const auto found = nodes_.find(Key(path));
    return found == nodes_.end() ? nullptr : &found->second;
  }
  bool CanWriteIn(const std::string& folder) const {
    const Node* node = Find(folder);
    return node != nullptr && node->folder && node->writable;
  }
  Node& NewNode(const std::string& key) {
    Node& node = nodes_[key];
    node.identity = ++lastIdentity_;
    node.device = device_;
    node.modified = ++lastModified_;
    return node;
  }
  void Put(const std::string& key, std::string bytes) {
    Node& node = nodes_.contains(key) ? nodes_.at(key) : NewNode(key);
    node.bytes = std::move(bytes);
    node.modified = ++lastModified_;
  }
  IoResult PutChecked(const std::string& path, std::string bytes) {
    const Node* node = Find(path);
    if (node != nullptr && node->folder) return Failure("open", path, EISDIR);
    if (!Exists(Parent(Key(path)))) return Failure("open", path, ENOENT);
    if (node == nullptr && !CanWriteIn(Parent(Key(path)))) return Failure("open", path, EACCES);
    Put(Key(path), std::move(bytes));
    return {};
  }
  IoResult Write(Operation operation, const std::string& path, std::string bytes) {
    if (auto fault = Ask(operation, path)) return *fault;
    return PutChecked(path, std::move(bytes));
  }
  // Takes out a node and all that is in it, by what follows its key.
  std::map<std::string, Node> Take(const std::string& top) {
    std::map<std::string, Node> taken;
    for (const auto& [key, node] : nodes_) {
      if (key == top || key.starts_with(top + "/")) taken.emplace(key.substr(top.size()), node);
    }
    for (const auto& [rest, node] : taken)
      nodes_.erase(top + rest);
    return taken;
  }
  std::optional<IoResult> Ask(Operation operation, const std::string& path) const {
    requests.push_back({operation, path});
    for (Fault& fault : faults_) {
      if (fault.operation != operation || fault.times == 0 || !path.ends_with(fault.pathEnd)) continue;
      if (fault.times > 0) --fault.times;
      return Failure("open", path, fault.error);
    }
    return std::nullopt;
  }

  std::map<std::string, Node> nodes_;
  mutable std::vector<Fault> faults_;
  std::uint64_t lastIdentity_ = 0;
  std::uint64_t device_ = 1;
  std::int64_t lastModified_ = 0;
};

}  // namespace vorlix
