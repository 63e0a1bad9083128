#pragma once

#include <string>
#include <utility>

/// Overwrites a secret before it gives its memory back, and leaves it empty.
void Forget(std::wstring& secret);

/// A password that is overwritten with the end of its life.
class PassingSecret {
  public:
    explicit PassingSecret(std::wstring text) : text_(std::move(text)) {}
    ~PassingSecret() { Forget(text_); }
    PassingSecret(const PassingSecret&) = delete;
    PassingSecret& operator=(const PassingSecret&) = delete;
    const std::wstring& Text() const { return text_; }

  private:
    std::wstring text_;
};
