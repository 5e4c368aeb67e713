// A library needs one translation unit, also while a layer has none for this build.
namespace {}
