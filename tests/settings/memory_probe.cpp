#include "settings/memory_settings.h"
#include "tests/settings/store_probe.h"

namespace {

SettingType StoredType(RawType type) {
    switch (type) {
    case RawType::DoubleWord:
        return SettingType::DoubleWord;
    case RawType::Text:
        return SettingType::Text;
    default:
        return SettingType::Binary;
    }
}

RawType ProbedType(SettingType type) {
    switch (type) {
    case SettingType::DoubleWord:
        return RawType::DoubleWord;
    case SettingType::Text:
        return RawType::Text;
    default:
        return RawType::Binary;
    }
}

} // namespace

void EmptyStore() {
    ClearMemorySettings();
}

void PutRaw(const std::wstring& key, const std::wstring& name, const RawValue& value) {
    PutMemorySetting(key, name, {StoredType(value.type), value.bytes});
}

std::optional<RawValue> FindRaw(const std::wstring& key, const std::wstring& name) {
    const StoredSetting* setting = FindMemorySetting(key, name);
    if (setting == nullptr) {
        return std::nullopt;
    }
    return RawValue{ProbedType(setting->type), setting->bytes};
}

std::wstring MakeRefusingKey() {
    SetMemorySettingsReadOnly(true);
    return L"TessarCE";
}
