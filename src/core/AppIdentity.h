#pragma once

// Names under which Quillbox2 and its helper process identify themselves on the system.
namespace qbidentity {

inline constexpr const char* kProcessName = "quillbox2";
inline constexpr const char* kHelperProcessName = "quillbox2-helper";
inline constexpr const char* kDisplayName = "Quillbox2";
inline constexpr const char* kBundleIdentifier = "org.quillbox2.Quillbox2";
inline constexpr const char* kHelperBundleIdentifier = "org.quillbox2.Quillbox2-Helper";
// Names the folder (and settings suite) shared by the application and its helper.
inline constexpr const char* kApplicationGroupIdentifier = "group.Q8B2X4K7LM.org.quillbox2";
// Folder name of the per-application support folder and the settings file.
inline constexpr const char* kBundleName = "Quillbox2";

} // namespace qbidentity
