// replaced by the notification layer
