#pragma once

#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "core/FormHost.h"
#include "core/ReceiptForm.h"
#include "core/Settings.h"

namespace zw::test {

// Records what the logic shows the user; answers questions with preset values.
class FakeHost : public FormHost
{
public:
    struct Message
    {
        std::string text;
        MessageStyle style;
        std::string title;
    };

    void showMessage(std::string_view text, MessageStyle style, std::string_view title) override
    {
        messages.push_back({std::string(text), style, std::string(title)});
    }
    int confirmQuestion(std::string_view text, MessageStyle style, std::string_view title) override
    {
        questions.push_back({std::string(text), style, std::string(title)});
        return confirmAnswer;
    }
    // A box with OK alone is a message, one with a choice a question.
    int messageBox(std::string_view text, int style, std::string_view title) override
    {
        if ((style & 0x7) == 0) {
            showMessage(text, static_cast<MessageStyle>(style), title);
            return kAnswerOk;
        }
        return confirmQuestion(text, static_cast<MessageStyle>(style), title);
    }
    std::optional<std::string> askText(std::string_view text, MessageStyle style, std::string_view title,
                                       std::string_view /*initial*/) override
    {
        questions.push_back({std::string(text), style, std::string(title)});
        return textAnswer;
    }
    void showNotice(Notice notice) override { notices.push_back(notice); }
    void beep() override { ++beeps; }
    void openWindow(std::string_view name) override { openedWindows.emplace_back(name); }

    std::vector<Message> messages;
    std::vector<Message> questions;
    std::vector<Notice> notices;
    std::vector<std::string> openedWindows;
    int beeps = 0;
    int confirmAnswer = kAnswerYes;
    std::optional<std::string> textAnswer;
};

// The settings tree in memory.
class MemorySettings : public Settings
{
public:
    std::string get(std::string_view application, std::string_view section, std::string_view key,
                    std::string_view defaultValue) const override
    {
        auto found = values.find({std::string(application), std::string(section), std::string(key)});
        return found == values.end() ? std::string(defaultValue) : found->second;
    }
    void save(std::string_view application, std::string_view section, std::string_view key,
              std::string_view value) override
    {
        values[{std::string(application), std::string(section), std::string(key)}] = value;
    }
    bool remove(std::string_view application, std::string_view section, std::string_view key) override
    {
        return values.erase({std::string(application), std::string(section), std::string(key)}) > 0;
    }
    bool removeSection(std::string_view application, std::string_view section) override
    {
        return std::erase_if(values, [&](const auto& entry) {
                   return std::get<0>(entry.first) == application && std::get<1>(entry.first) == section;
               }) > 0;
    }
    // Shorthand for the program's own application name.
    std::string option(std::string_view section, std::string_view key) const
    {
        return get(kApplicationName, section, key, "");
    }
    void set(std::string_view section, std::string_view key, std::string_view value)
    {
        save(kApplicationName, section, key, value);
    }

    std::map<std::tuple<std::string, std::string, std::string>, std::string> values;
};

// A receipt form that shows its messages to a FakeHost and keeps its settings in memory.
struct FakeFormParts
{
    MemorySettings settings;
    FakeHost host;
    ReceiptForm form;

    FakeFormParts() { form.attach(&settings, &host); }
};

} // namespace zw::test
