#pragma once

/// Holds something off for as long as it lives.
class Hold {
  public:
    Hold() = default;
    virtual ~Hold() = default;
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;
};
