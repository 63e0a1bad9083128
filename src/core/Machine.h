#pragma once

class Clock;
class DiscWriters;
class Drives;
class Environment;
class EventLog;
class Files;
class Locale;
class MessageBoxes;
class MessageLoop;
class OperatingSystem;
class Power;
class Processes;
class SettingsFiles;
class StringTable;
class UsbDevices;
class UserAccount;

/// A way to one of the machine's ports, which outlives it. Who holds it as a constant can ask the port, and change
/// nothing through it: it is moved, never copied, so that no constant one becomes another.
template<typename T>
class Port {
  public:
    Port(T& port) : port_(&port) {}
    Port(Port&&) noexcept = default;
    Port& operator=(Port&&) noexcept = default;

    T* operator->() { return port_; }
    const T* operator->() const { return port_; }
    T& operator*() { return *port_; }
    const T& operator*() const { return *port_; }

  private:
    T* port_;
};

/// What the program asks of the machine.
struct Machine {
    Port<StringTable> strings;
    Port<Drives> drives;
    Port<UsbDevices> usb;
    Port<Files> files;
    Port<Processes> processes;
    Port<OperatingSystem> operatingSystem;
    Port<Environment> environment;
    Port<Locale> locale;
    Port<SettingsFiles> settings;
    Port<UserAccount> account;
    Port<Clock> clock;
    Port<Power> power;
    Port<EventLog> eventLog;
    Port<MessageBoxes> messageBoxes;
    Port<MessageLoop> messageLoop;
    Port<DiscWriters> discWriters;
};
