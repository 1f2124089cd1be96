#include "frn/frn_registry.h"

#include <atomic>
#include <mutex>
#include <new>

#include "engine/type_lock.h"

namespace kbond::frn {
namespace {

struct RegistryNode {
  FrnType record;
  int32_t handle;
  RegistryNode* next;
};

RegistryNode* g_head = nullptr;

// Handles run 1, 2, ... 2^31 - 1 and then start again at 1; once they have
// wrapped, a candidate still held by a live entry is skipped.
constexpr uint64_t kHandleSpan = 0x7FFFFFFFu;
std::atomic<uint64_t> g_handle_counter{0};

// Holds the registry's critical section when the library runs multi-threaded.
class RegistryLock {
 public:
  RegistryLock() noexcept : section_(engine::critical_section(engine::kFrnRegistrySection)) {
    if (section_) section_->lock();
  }
  ~RegistryLock() {
    if (section_) section_->unlock();
  }
  RegistryLock(const RegistryLock&) = delete;
  RegistryLock& operator=(const RegistryLock&) = delete;

 private:
  std::mutex* section_;
};

bool handle_in_use(int32_t handle) noexcept {
  for (const RegistryNode* node = g_head; node; node = node->next) {
    if (node->handle == handle) return true;
  }
  return false;
}

// Called with the registry held.
int32_t next_free_handle() noexcept {
  for (;;) {
    const uint64_t count = g_handle_counter.fetch_add(1, std::memory_order_relaxed);
    const auto handle = static_cast<int32_t>(count % kHandleSpan + 1);
    if (count < kHandleSpan || !handle_in_use(handle)) return handle;
  }
}

}  // namespace

int32_t registry_insert(const FrnType& record) noexcept {
  auto* node = new (std::nothrow) RegistryNode{record, 0, nullptr};
  if (!node) return 0;
  RegistryLock lock;
  node->handle = next_free_handle();
  node->next = g_head;
  g_head = node;
  return node->handle;
}

bool registry_lookup(int32_t handle, FrnType* out) noexcept {
  if (handle == 0 || !out) return false;
  RegistryLock lock;
  for (const RegistryNode* node = g_head; node; node = node->next) {
    if (node->handle == handle) {
      *out = node->record;
      return true;
    }
  }
  return false;
}

void registry_remove(int32_t handle) noexcept {
  if (handle == 0) return;
  RegistryNode* found = nullptr;
  {
    RegistryLock lock;
    for (RegistryNode** link = &g_head; *link; link = &(*link)->next) {
      if ((*link)->handle == handle) {
        found = *link;
        *link = found->next;
        break;
      }
    }
  }
  delete found;
}

int32_t registry_size() noexcept {
  RegistryLock lock;
  int32_t size = 0;
  for (const RegistryNode* node = g_head; node; node = node->next) ++size;
  return size;
}

void registry_restart_handles(uint64_t next) noexcept {
  g_handle_counter.store(next, std::memory_order_relaxed);
}

}  // namespace kbond::frn
