#include "platform/framework/DaoException.h"

#include <utility>

CDaoException::CDaoException(DaoError error, std::string message)
    : m_error(error), m_message(std::move(message)) {}
