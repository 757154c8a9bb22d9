#pragma once

// Called in the child between fork and exec: it ends with its parent, leaves no core (it holds keys), and takes signals
// again that the service blocks for itself.
void limitChild();

// The service itself holds keys too: no core, and no access for processes of the same user.
void protectOwnMemory();
