#pragma once

// Messages about the quote store and the first steps, for the message bar.
namespace qblaunchmessages {

// Tells of a damaged collection file kept as a copy at launch, and, while no signature
// file is chosen, what to do first (with a link to the help and the chooser).
void postLaunchMessages();

// Shows every failed save of the collection, with "Try Again", and takes the message
// back once a save works.
void installSaveMessages();

} // namespace qblaunchmessages
