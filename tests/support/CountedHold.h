#pragma once

/// Counts in the place that it is given for as long as it lives.
class CountedHold : public Hold {
  public:
    explicit CountedHold(int& count) : count_(count) { ++count_; }
    ~CountedHold() override { --count_; }

  private:
    int& count_;
};
