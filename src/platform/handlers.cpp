#include "platform/handlers.h"

namespace platform {
namespace {

std::function<void(const store::Failure&)>& reporter() {
  static std::function<void(const store::Failure&)> report;
  return report;
}

}  // namespace

void setFailureReporter(std::function<void(const store::Failure&)> report) {
  reporter() = std::move(report);
}

void reportFailure(const store::Failure& failure) {
  if (reporter()) reporter()(failure);
}

}  // namespace platform
