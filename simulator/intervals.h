#pragma once

namespace sim {

/// The device's own times, all in ms. Tests shorten them.
struct Intervals
{
    int announce = 1000;
    int life = 50; ///< step in which the phone, the USB host and the programme move on
    int meter = 50; ///< from one level datagram to the next
    int meterFor = 12000; ///< how long one metering request keeps the levels coming
    int shutDown = 1000; ///< from a reboot command until the device falls silent
    int reboot = 2000; ///< silence while the device restarts
    int save = 500; ///< from a change of settings until the state file is written
    /// Longest wait of a reordered reply for another one to overtake it. Who asks one thing at a time asks
    /// the next when the first is overdue, and the user has said so.
    int hold = 60000;
    int tftpRequest = 1000; ///< wait for the first block before the read request is repeated
    int tftpAck = 20; ///< wait for the next block; doubles with each repeat
    int tftpAckMost = 2000; ///< but not beyond this
    int tftpRepeats = 12; ///< repeats without an answer until a transfer is given up (a count, no time)
    int tftpLinger = 6000; ///< how long a repeated last block is still acknowledged
};

} // namespace sim
