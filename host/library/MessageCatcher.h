#pragma once

#include <string>

#include "platform/framework/MessageBox.h"

namespace orxdb {

/// Keeps the last message that the component shows, instead of showing it.
class MessageCatcher {
 public:
  MessageCatcher()
      : m_earlier(
            InstallMessageBoxHandler([this](const std::string& text, const std::string&, unsigned) {
              m_text = text;
              return IDOK;
            })) {}
  MessageCatcher(const MessageCatcher&) = delete;
  MessageCatcher& operator=(const MessageCatcher&) = delete;
  ~MessageCatcher() { InstallMessageBoxHandler(m_earlier); }

  /// Empty without a message.
  const std::string& Text() const noexcept { return m_text; }

 private:
  std::string m_text;
  MessageBoxHandler m_earlier;
};

}  // namespace orxdb
