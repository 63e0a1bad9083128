#pragma once

#include <functional>

class Application;

/// Work that may take long and does not let other handlers in. Once it has lasted half a second it shows the hourglass,
/// and from then on it keeps the windows painted.
class LongWork {
  public:
    /// `beforePainting` brings what is to be painted up to date.
    LongWork(Application& app, std::function<void()> beforePainting);

    /// Runs the work. Work within work belongs to the outermost.
    template<typename Steps>
    void Run(Steps&& steps) {
        const Span span(*this);
        steps();
    }

    bool IsRunning() const { return depth_ > 0; }

    /// To be called between steps, as often as is handy.
    void Continue();

  private:
    class Span {
      public:
        explicit Span(LongWork& work) : work_(work) { work_.Begin(); }
        ~Span() { work_.End(); }
        Span(const Span&) = delete;
        Span& operator=(const Span&) = delete;

      private:
        LongWork& work_;
    };

    void Begin();
    void End();
    double Elapsed() const;

    Application& app_;
    std::function<void()> beforePainting_;
    int depth_ = 0;
    double startSeconds_ = 0;
    double paintedAfterSeconds_ = 0;
    bool isLong_ = false;
};
