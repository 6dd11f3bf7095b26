// The ten form events: who subscribed, and how an event is announced to them.
#pragma once

#include "plugin/host/host.h"
#include "sdk/forms_table.h"

namespace quillform {

// Makes the ten empty lists; false when memory runs out. DestroyFormEventLists frees them with
// every registration they still hold.
bool CreateFormEventLists();
void DestroyFormEventLists();
void ForgetFormEventLists();

// The registration's identifier, from 1 up; 0 for an event number outside 0 to 9. Raises
// kErrorBadParameter for a full list.
std::uint32_t FormEventRegister(std::uint32_t event, FormEventNotify notify,
                                FormEventFailure failure, void* clientData);
// Raises kErrorBadParameter when no registration has the identifier.
void FormEventUnregister(std::uint32_t event, std::uint32_t identifier);

// Calls the subscribers in the order they came. When one raises, those already called get their
// failure call and the error is raised again.
void FormEventAnnounce(std::uint32_t event, FormEventRecord* record);

}  // namespace quillform
