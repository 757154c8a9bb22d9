// SPDX-License-Identifier: GPL-2.0
// The hardware radio switch of a simulated radio, which the radio itself does not have. The switch of an interface:
//   echo 'NAME 0' > /sys/module/radio_switch/parameters/set      (0 off, 1 on)
#include <linux/module.h>
#include <linux/netdevice.h>
#include <net/cfg80211.h>

static int set(const char *text, const struct kernel_param *parameter)
{
	char name[IFNAMSIZ];
	unsigned int on;
	struct net_device *device;
	int result = -ENODEV;

	if (sscanf(text, "%15s %u", name, &on) != 2)
		return -EINVAL;
	device = dev_get_by_name(&init_net, name);
	if (!device)
		return result;
	if (device->ieee80211_ptr) {
		wiphy_rfkill_set_hw_state_reason(device->ieee80211_ptr->wiphy, !on, RFKILL_HARD_BLOCK_SIGNAL);
		result = 0;
	}
	dev_put(device);
	return result;
}

static const struct kernel_param_ops operations = { .set = set };
module_param_cb(set, &operations, NULL, 0200);

MODULE_DESCRIPTION("Sets the hardware radio switch of a wireless interface");
MODULE_LICENSE("GPL");
