#include "document/stream_error.h"

#include <algorithm>
#include <cerrno>
#include <iterator>

namespace scrivalen::document {
namespace {

struct Named {
  int error;
  const char* text;
};

// What a function that writes may fail with. The numbers are the system's, the texts are not.
constexpr Named kErrors[] = {
    {EACCES, "Permission denied"},
    {EAGAIN, "Resource temporarily unavailable"},
    {EBADF, "Bad file descriptor"},
    {EBUSY, "Device or resource busy"},
    {ECANCELED, "Operation canceled"},
    {ECONNABORTED, "Software caused connection abort"},
    {ECONNREFUSED, "Connection refused"},
    {ECONNRESET, "Connection reset by peer"},
    {EDEADLK, "Resource deadlock avoided"},
    {EEXIST, "File exists"},
    {EFAULT, "Bad address"},
    {EFBIG, "File too large"},
    {EHOSTUNREACH, "No route to host"},
    {EILSEQ, "Invalid or incomplete multibyte or wide character"},
    {EINTR, "Interrupted system call"},
    {EINVAL, "Invalid argument"},
    {EIO, "Input/output error"},
    {EISDIR, "Is a directory"},
    {EMFILE, "Too many open files"},
    {EMSGSIZE, "Message too long"},
    {ENAMETOOLONG, "File name too long"},
    {ENETDOWN, "Network is down"},
    {ENETRESET, "Network dropped connection on reset"},
    {ENETUNREACH, "Network is unreachable"},
    {ENFILE, "Too many open files in system"},
    {ENOBUFS, "No buffer space available"},
    {ENODEV, "No such device"},
    {ENOENT, "No such file or directory"},
    {ENOLCK, "No locks available"},
    {ENOMEM, "Cannot allocate memory"},
    {ENOSPC, "No space left on device"},
    {ENOSYS, "Function not implemented"},
    {ENOTCONN, "Transport endpoint is not connected"},
    {ENOTDIR, "Not a directory"},
    {ENOTSUP, "Operation not supported"},
    {ENXIO, "No such device or address"},
    {EOVERFLOW, "Value too large for defined data type"},
    {EPERM, "Operation not permitted"},
    {EPIPE, "Broken pipe"},
    {EPROTO, "Protocol error"},
    {ERANGE, "Numerical result out of range"},
    {EROFS, "Read-only file system"},
    {ESPIPE, "Illegal seek"},
    {ETIMEDOUT, "Connection timed out"},
    {EWOULDBLOCK, "Resource temporarily unavailable"},
};

}  // namespace

std::string streamErrorText(int error) {
  const auto* const known =
      std::find_if(std::begin(kErrors), std::end(kErrors), [&](const Named& one) { return one.error == error; });
  return known != std::end(kErrors) ? known->text : "error " + std::to_string(error);
}

}  // namespace scrivalen::document
