#pragma once

#include <array>
#include <cstdint>

enum class TextId : int;

/// What a backup is saved on, by the code that the windows hand each other.
enum class Medium : std::int16_t { Cd = 0, Dvd = 1, RemovableDisk = 2, ExternalDisk = 3 };

inline constexpr std::array AllMedia{Medium::Cd, Medium::Dvd, Medium::RemovableDisk, Medium::ExternalDisk};

/// The text that names a medium, such as "Disque amovible".
TextId MediumLabelId(Medium medium);
